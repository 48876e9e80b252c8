// SPDX-License-Identifier: MIT
// Sources and folders that go wrong, on the real tools: each ends in a finished file or in a
// message that names file and cause; the source stays as it was, and nothing else is left.
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

class TestBadInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void unusableSources_data();
    void unusableSources();
    void truncatedSource();
    void oddNames_data();
    void oddNames();
    void longNames();
    void foldersWithoutRename_data();
    void foldersWithoutRename();
    void keepsWhatCannotBeMoved();
    void sourceIsNeverTouched();
    void noPermission();
    void outputFolderIsAFile();
    void fullDisk();
    void fileSizeLimit();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QByteArray clipBytes() const;

    QTemporaryDir m_dir;
    QString m_clip;
};

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QString message(const QJsonObject &record)
{
    return record[QLatin1String("message")].toString();
}

QString state(const QJsonObject &record)
{
    return record[QLatin1String("state")].toString();
}

} // namespace

void TestBadInput::initTestCase()
{
    m_clip = path(QStringLiteral("clip.mp4"));
    makeClip(m_clip);
    // Whoever the test runs as, others have to be able to read the sources.
    QFile::setPermissions(m_dir.path(),
                          QFile::permissions(m_dir.path()) | QFile::ReadOther | QFile::ExeOther);
}

QByteArray TestBadInput::clipBytes() const
{
    return contentOf(m_clip);
}

void TestBadInput::unusableSources_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("cause");
    const QString folder = path(QStringLiteral("folder.mp4"));
    QDir().mkpath(folder);
    const QString empty = path(QStringLiteral("empty.mp4"));
    writeFile(empty, {});
    const QString text = path(QStringLiteral("text.mp4"));
    writeFile(text, "These are words.\n");
    QTest::newRow("missing") << path(QStringLiteral("missing.mp4")) << QStringLiteral("不存在");
    QTest::newRow("folder") << folder << QStringLiteral("文件夹");
    QTest::newRow("empty") << empty << QStringLiteral("为空");
    QTest::newRow("text") << text << QStringLiteral("不是媒体文件");
    QTest::newRow("device") << QStringLiteral("/dev/zero") << QStringLiteral("不是普通文件");
}

void TestBadInput::unusableSources()
{
    QFETCH(QString, file);
    QFETCH(QString, cause);
    const QTemporaryDir out;
    const QJsonObject record = convertOne(file, 1003005, out.path());
    QCOMPARE(state(record), QStringLiteral("ERROR"));
    QVERIFY2(message(record).startsWith(file), qPrintable(message(record)));
    QVERIFY2(message(record).contains(cause), qPrintable(message(record)));
    QVERIFY(QDir(out.path()).exists());
    QVERIFY(entriesOf(out.path()).isEmpty());
}

void TestBadInput::truncatedSource()
{
    // ffmpeg writes the index last: without it the file is unreadable.
    const QString file = path(QStringLiteral("half.mp4"));
    const QByteArray whole = clipBytes();
    writeFile(file, whole.left(whole.size() / 2));
    const QTemporaryDir out;
    const QJsonObject record = convertOne(file, 1003005, out.path());
    QCOMPARE(state(record), QStringLiteral("ERROR"));
    QVERIFY2(message(record).contains(QStringLiteral("文件不完整")), qPrintable(message(record)));
    QVERIFY(!record[QLatin1String("report")].toArray().isEmpty());
    QVERIFY(entriesOf(out.path()).isEmpty());
}

void TestBadInput::oddNames_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"two blanks  in it",
                             "it's",
                             "\"quoted\"",
                             "\"",
                             "a\"b'c",
                             "%d",
                             "100%1 %2 %s",
                             "-y",
                             "-",
                             "new\nline",
                             "汉字与空格 文件",
                             "🎬🎉",
                             "$(touch x)`id`",
                             "a;b|c&d",
                             "back\\slash",
                             "file:name",
                             "concat:a|b",
                             "[v]=x,y",
                             "trailing ",
                             "tab\there",
                             ".hidden",
                             "a.b.c"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
}

void TestBadInput::oddNames()
{
    QFETCH(QString, name);
    const QTemporaryDir in;
    // The folder's name is odd as well, as source folder and as output folder.
    const QString folder = in.filePath(QLatin1Char('f') + name);
    QVERIFY(QDir().mkpath(folder));
    const QString source = folder + QLatin1Char('/') + name + QStringLiteral(".mp4");
    QVERIFY(QFile::copy(m_clip, source));
    for (const int preset : {1003005, 1200002}) {
        const QJsonObject record = convertOne(source, preset, folder);
        QVERIFY2(state(record) == QLatin1String("FINISHED"), qPrintable(message(record)));
        const QString suffix =
            preset == 1200002 ? QStringLiteral(".mp3") : QStringLiteral("(2).mp4");
        QCOMPARE(record[QLatin1String("output")].toString(),
                 folder + QLatin1Char('/') + name + suffix);
        QVERIFY(probeMedia(record[QLatin1String("output")].toString()).isMedia());
    }
    QCOMPARE(entriesOf(folder).size(), 3);
    QVERIFY(contentOf(source) == clipBytes());
    QCOMPARE(entriesOf(in.path()).size(), 1);
}

void TestBadInput::longNames()
{
    const QTemporaryDir out;
    // 250 bytes and ".mp4" just fit; the numbered name of the second doesn't.
    const QString name = QString(83, QChar(0x6c49)) + QLatin1Char('x');
    QCOMPARE(name.toUtf8().size(), 250);
    const QStringList named{QStringLiteral("--name"), name};
    const QJsonObject first = convertOne(m_clip, 1003005, out.path(), named);
    QCOMPARE(state(first), QStringLiteral("FINISHED"));
    const QJsonObject second = convertOne(m_clip, 1003005, out.path(), named);
    QCOMPARE(state(second), QStringLiteral("ERROR"));
    // Said before the work, not after it.
    QVERIFY2(message(second).endsWith(QStringLiteral("输出文件名过长")),
             qPrintable(message(second)));
    const QJsonObject longer =
        convertOne(m_clip, 1003005, out.path(), {QStringLiteral("--name"), name + name});
    QVERIFY2(message(longer).contains(QStringLiteral("文件名过长")), qPrintable(message(longer)));
    QCOMPARE(entriesOf(out.path()), QStringList(name + QStringLiteral(".mp4")));
}

// The command line on a system whose file system lacks ways to rename.
static QJsonObject convertWithoutRename(const QString &file, const QString &outDir,
                                        const QString &mode)
{
    const ToolRun run = runCli(
        {QStringLiteral("convert"), file, QStringLiteral("--preset"), QStringLiteral("1003005"),
         QStringLiteral("--out"), outDir, QStringLiteral("--json")},
        {QStringLiteral("LD_PRELOAD=") + builtProgram(QStringLiteral("norename.so")),
         QStringLiteral("NORENAME=") + mode,
         QStringLiteral("ASAN_OPTIONS=verify_asan_link_order=0")});
    const QList<QJsonObject> records = jobRecords(run);
    return records.size() == 1 ? records.first() : QJsonObject();
}

void TestBadInput::foldersWithoutRename_data()
{
    QTest::addColumn<QString>("mode");
    QTest::newRow("renames replace") << QStringLiteral("careless");
    QTest::newRow("no renames") << QStringLiteral("none");
}

void TestBadInput::foldersWithoutRename()
{
    QFETCH(QString, mode);
    const QTemporaryDir out;
    const QString mine = out.filePath(QStringLiteral("clip.mp4"));
    writeFile(mine, "mine");
    const QJsonObject record = convertWithoutRename(m_clip, out.path(), mode);
    QCOMPARE(record[QLatin1String("output")].toString(),
             out.filePath(QStringLiteral("clip(2).mp4")));
    QCOMPARE(contentOf(mine), QByteArray("mine"));
    const ProbedFile result = probeMedia(out.filePath(QStringLiteral("clip(2).mp4")));
    QCOMPARE(result.video[QLatin1String("width")].toInt(), 640);
    QCOMPARE(entriesOf(out.path()),
             (QStringList{QStringLiteral("clip(2).mp4"), QStringLiteral("clip.mp4")}));
}

void TestBadInput::keepsWhatCannotBeMoved()
{
    const QTemporaryDir out;
    const QJsonObject record = convertWithoutRename(m_clip, out.path(), QStringLiteral("refused"));
    QCOMPARE(state(record), QStringLiteral("ERROR"));
    const QString kept = message(record).section(QStringLiteral("成品保留在："), 1);
    QVERIFY2(kept.startsWith(out.path()), qPrintable(message(record)));
    // Also after the program's end, and after the next one's start.
    const QJsonObject next = convertOne(m_clip, 1003005, out.path());
    QCOMPARE(state(next), QStringLiteral("FINISHED"));
    QCOMPARE(probeMedia(kept).video[QLatin1String("width")].toInt(), 640);
}

void TestBadInput::sourceIsNeverTouched()
{
    const QTemporaryDir folder;
    const QString real = folder.filePath(QStringLiteral("real.mp4"));
    const QString link = folder.filePath(QStringLiteral("link.mp4"));
    QVERIFY(QFile::copy(m_clip, real));
    QVERIFY(QFile::link(real, link));
    const QDateTime before = QFileInfo(real).lastModified();
    QCOMPARE(convertOne(real, 1003005, folder.path())[QLatin1String("output")].toString(),
             folder.filePath(QStringLiteral("real(2).mp4")));
    QCOMPARE(convertOne(link, 1003005, folder.path())[QLatin1String("output")].toString(),
             folder.filePath(QStringLiteral("link(2).mp4")));
    // A link that leads nowhere keeps its name too.
    const QString dangling = folder.filePath(QStringLiteral("away.mp4"));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("nowhere.mp4")), dangling));
    QCOMPARE(convertOne(real, 1003005, folder.path(),
                        {QStringLiteral("--name"), QStringLiteral("away")})[QLatin1String("output")]
                 .toString(),
             folder.filePath(QStringLiteral("away(2).mp4")));
    QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("nowhere.mp4"))));
    QVERIFY(contentOf(real) == clipBytes());
    QCOMPARE(QFileInfo(real).lastModified(), before);
    QVERIFY(QFileInfo(link).isSymLink());
}

void TestBadInput::noPermission()
{
    if (geteuid() != 0)
        QSKIP("needs root, to become somebody else");
    const QTemporaryDir work;
    QVERIFY(QFile::setPermissions(work.path(), QFile::permissions(work.path()) | QFile::ReadOther |
                                                   QFile::ExeOther));
    const QString secret = work.filePath(QStringLiteral("secret.mp4"));
    QVERIFY(QFile::copy(m_clip, secret));
    QVERIFY(QFile::setPermissions(secret, QFile::ReadOwner | QFile::WriteOwner));
    const QString home = work.filePath(QStringLiteral("home"));
    QVERIFY(QDir().mkpath(home));
    QCOMPARE(chown(QFile::encodeName(home).constData(), 65534, 65534), 0);
    const auto convertAsNobody = [&](const QString &file, const QString &out) {
        const ToolRun run = runTool(
            QStringLiteral("setpriv"),
            {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
             QStringLiteral("--clear-groups"), builtProgram(QStringLiteral("morvane-cli")),
             QStringLiteral("convert"), file, QStringLiteral("--preset"), QStringLiteral("1200002"),
             QStringLiteral("--out"), out, QStringLiteral("--json")},
            {QStringLiteral("XDG_DATA_HOME=") + home, QStringLiteral("XDG_CACHE_HOME=") + home});
        return jobRecords(run).value(0);
    };
    const QJsonObject usable = convertAsNobody(m_clip, home + QStringLiteral("/out"));
    if (usable.isEmpty())
        QSKIP("the build lies where others can't go");
    QVERIFY2(state(usable) == QLatin1String("FINISHED"), qPrintable(message(usable)));

    const QJsonObject unreadable = convertAsNobody(secret, home);
    QVERIFY2(message(unreadable).contains(QStringLiteral("没有读取权限")),
             qPrintable(message(unreadable)));
    const QJsonObject unwritable = convertAsNobody(m_clip, work.path());
    QVERIFY2(message(unwritable).contains(QStringLiteral("无法写入")),
             qPrintable(message(unwritable)));
    const QJsonObject unmade = convertAsNobody(m_clip, work.filePath(QStringLiteral("new/deep")));
    QVERIFY2(message(unmade).contains(QStringLiteral("无法在输出目录中创建")),
             qPrintable(message(unmade)));
    QCOMPARE(entriesOf(work.path()),
             QStringList({QStringLiteral("home"), QStringLiteral("secret.mp4")}));
}

void TestBadInput::outputFolderIsAFile()
{
    const QTemporaryDir work;
    const QString file = work.filePath(QStringLiteral("file"));
    writeFile(file, "mine");
    const QJsonObject record = convertOne(m_clip, 1003005, file);
    QVERIFY2(message(record).contains(QStringLiteral("不是文件夹")), qPrintable(message(record)));
    QCOMPARE(contentOf(file), QByteArray("mine"));
}

void TestBadInput::fullDisk()
{
    const QTemporaryDir mount;
    const ToolRun mounted =
        runTool(QStringLiteral("mount"),
                {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                 QStringLiteral("size=64k"), QStringLiteral("tmpfs"), mount.path()});
    if (mounted.exitCode != 0)
        QSKIP("no right to mount a small disk");
    // Half a second of plain stereo samples takes 88 KB.
    const QJsonObject record = convertOne(m_clip, 1205001, mount.path());
    const QStringList left = entriesOf(mount.path());
    runTool(QStringLiteral("umount"), {mount.path()});
    QCOMPARE(state(record), QStringLiteral("ERROR"));
    QVERIFY2(message(record).contains(QStringLiteral("磁盘空间不足")), qPrintable(message(record)));
    QVERIFY2(left.isEmpty(), qPrintable(left.join(u' ')));
}

void TestBadInput::fileSizeLimit()
{
    const QTemporaryDir out;
    const ToolRun run = runTool(
        QStringLiteral("bash"),
        {QStringLiteral("-c"),
         QStringLiteral("ulimit -c 0; ulimit -f 64; exec \"$0\" convert \"$1\" --preset 1205001 "
                        "--out \"$2\" --json"),
         builtProgram(QStringLiteral("morvane-cli")), m_clip, out.path()},
        {QStringLiteral("XDG_CACHE_HOME=") + out.filePath(QStringLiteral("cache"))});
    const QJsonObject record = jobRecords(run).value(0);
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(state(record), QStringLiteral("ERROR"));
    QVERIFY2(message(record).startsWith(m_clip), qPrintable(message(record)));
    QCOMPARE(entriesOf(out.path()), QStringList(QStringLiteral("cache")));
}

QTEST_GUILESS_MAIN(TestBadInput)

#include "tst_badinput.moc"
