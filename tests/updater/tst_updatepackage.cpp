// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "support/casename.h"
#include "support/testfile.h"
#include "updater/arguments.h"
#include "updater/unpack.h"
#include "updater/updatefixture.h"

#include <QtTest>

#include <sys/stat.h>

class TestUpdatePackage : public QObject
{
    Q_OBJECT

private slots:
    void onlyGenuineAndNewer();
    void hostileEntries();
    void unpacksWhatBelongs();
    void limits();
    void arguments();

private:
    QString unpack(const QVector<ArchiveEntry> &entries, const UnpackLimits &limits = {});
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestUpdatePackage::onlyGenuineAndNewer()
{
    const QByteArray good = packageOf(archiveOf({{"a"}}), 17);
    const auto check = [](const char *caseName, const QByteArray &bytes, int installed,
                          const QByteArray &key, bool accepted) {
        const CaseName inCase(caseName);
        QTemporaryFile file;
        QVERIFY(file.open() && file.write(bytes) == bytes.size() && file.flush());
        const UpdatePackage package = readUpdatePackage(file, key, installed);
        QCOMPARE(package.isAccepted(), accepted);
        if (accepted)
            QCOMPARE(package.contentAt, qint64(bytes.indexOf("\n\n") + 2));
    };
    const auto changed = [&good](const char *from, const char *to) {
        return QByteArray(good).replace(from, to);
    };
    const QByteArray key = updateKey();
    check("genuine", good, 16, key, true);
    check("the same version", good, 17, key, false);
    check("older", good, 18, key, false);
    check("no key", good, 16, {}, false);
    check("another key", good, 16, QByteArray(32, 'k'), false);
    check("raised version", changed("version 17", "version 18"), 16, key, false);
    check("unsigned", changed("signature ", "unsigned "), 16, key, false);
    check("longer", good + 'x', 16, key, false);
    check("truncated", good.left(good.size() - 1), 16, key, false);
    check("header only", good.left(good.indexOf("\n\n") + 2), 16, key, false);
    check("empty", {}, 16, key, false);
    QByteArray flipped = good;
    flipped[flipped.size() - 5] = char(flipped.at(flipped.size() - 5) ^ 1);
    check("one bit", flipped, 16, key, false);
    QByteArray respelled = good;
    const int last = respelled.indexOf("==\n\n") - 1;
    respelled[last] = char(respelled.at(last) + 1);
    check("the signature in other letters", respelled, 16, key, false);
    QByteArray signature = good;
    signature[signature.indexOf("signature ") + 12] =
        signature.at(signature.indexOf("signature ") + 12) == 'A' ? 'B' : 'A';
    check("signature", signature, 16, key, false);
}

QString TestUpdatePackage::unpack(const QVector<ArchiveEntry> &entries, const UnpackLimits &limits)
{
    m_dir = std::make_unique<QTemporaryDir>();
    const QString package = m_dir->filePath("archive"_s);
    writeTestFile(package, archiveOf(entries));
    QFile file(package);
    QString error;
    const QString folder = m_dir->filePath("new"_s);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return "unprepared"_s;
    unpackArchive(file, folder, error, limits);
    return error;
}

// Beside the folder there is only the archive afterwards.
void TestUpdatePackage::hostileEntries()
{
    const auto check = [this](const char *caseName, const QVector<ArchiveEntry> &entries) {
        const CaseName inCase(caseName);
        const QString error = unpack(entries);
        QVERIFY(!error.isEmpty() && error != "unprepared"_s);
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"archive"_s, "new"_s}));
        QVERIFY(!QFile::exists("/tmp/morvane-escaped"_s));
    };
    check("absolute", {{"/tmp/morvane-escaped"}});
    check("up", {{"../escaped"}});
    check("up inside", {{"a/../../escaped"}});
    check("link to the root", {{"l", "/", 'l'}});
    check("link up", {{"l", "..", 'l'}});
    check("link up from a folder", {{"a", "", 'd'}, {"a/l", "../../escaped", 'l'}});
    check("through a link", {{"a", "", 'd'}, {"l", "a", 'l'}, {"l/file"}});
    check("over a link", {{"l", "a", 'l'}, {"l"}});
    // By words "l/.." is the folder itself.
    check("up behind a link", {{"l", ".", 'l'}, {"m", "l/../x", 'l'}});
    check("hard link", {{"h", "/etc/passwd", 'h'}});
    check("device", {{"d", "", 'c'}});
    check("set user id", {{"s", "x", 'f', 04755}});
    check("set group id", {{"s", "x", 'f', 02755}});
    check("twice", {{"a"}, {"a"}});
}

void TestUpdatePackage::unpacksWhatBelongs()
{
    // A user who shares nothing: an administrator's installation is for all all the same.
    const mode_t usual = ::umask(077);
    const QString error = unpack({{"./", "", 'd', 0700},
                                  {"./module/", "", 'd', 0},
                                  {"./module/tool", "t", 'f', 0700},
                                  {"./text", "y", 'f', 0600},
                                  {"./module/link", "../text", 'l'}});
    ::umask(usual);
    QCOMPARE(error, QString());
    const QString folder = m_dir->filePath("new"_s);
    QCOMPARE(contentOf(folder + "/module/link"_s), QByteArray("y"));
    QVERIFY(QFileInfo(folder + "/module/tool"_s).isExecutable());
    QCOMPARE(int(QFile::permissions(folder + "/text"_s) & 0x0777), 0x0644);
    QCOMPARE(int(QFile::permissions(folder + "/module"_s) & 0x0777), 0x0755);
}

void TestUpdatePackage::limits()
{
    const QVector<ArchiveEntry> two{{"a", "123"}, {"b", "456"}};
    QCOMPARE(unpack(two, {6, 2}), QString());
    QVERIFY(!unpack(two, {5, 2}).isEmpty());
    QVERIFY(!unpack(two, {6, 1}).isEmpty());

    QByteArray damaged = archiveOf({{"a", QByteArray(100000, 'a')}});
    damaged.chop(20);
    QTemporaryFile file;
    QVERIFY(file.open() && file.write(damaged) == damaged.size() && file.flush() && file.seek(0));
    QString error;
    const QTemporaryDir folder;
    QCOMPARE(unpackArchive(file, folder.path(), error), Unpacked::Unfit);
    QVERIFY2(error.contains("已损坏"_s), qPrintable(error));
}

void TestUpdatePackage::arguments()
{
    const QStringList good{"-downloadurl=file:///tmp/a%20b"_s, "-downloadscale=5"_s,
                           "-installpath=/opt/x y"_s, "-lock=morvane"_s,
                           "-startup=/opt/x y/morvane"_s};
    const auto errorOf = [](const QStringList &words) {
        QString error;
        UpdaterArguments::parse(words, error);
        return error;
    };
    QString error;
    const UpdaterArguments read = UpdaterArguments::parse(good, error);
    QCOMPARE(error, QString());
    QCOMPARE(read.package, "/tmp/a b"_s);
    QCOMPARE(read.installFolder, "/opt/x y"_s);
    QCOMPARE(read.program, "/opt/x y/morvane"_s);
    for (int index = 0; index < good.size(); ++index) {
        QStringList words = good;
        words.removeAt(index);
        QVERIFY(!errorOf(words).isEmpty());
        QVERIFY(!errorOf(good + QStringList(good.at(index))).isEmpty());
    }
    const auto with = [&good](int index, const QString &word) {
        QStringList words = good;
        words[index] = word;
        return words;
    };
    QVERIFY(!errorOf(with(0, "-downloadurl=https://example.org/a"_s)).isEmpty());
    QVERIFY(!errorOf(with(2, "-installpath=x"_s)).isEmpty());
    QVERIFY(!errorOf(with(4, "-startup=/bin/sh"_s)).isEmpty());
    QVERIFY(!errorOf(with(4, "-startup=/opt/x y/../sh"_s)).isEmpty());
}

QTEST_GUILESS_MAIN(TestUpdatePackage)
#include "tst_updatepackage.moc"
