// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "platform/namedlock.h"
#include "platform/ownfolder.h"
#include "support/casename.h"
#include "support/testfile.h"
#include "support/toolrun.h"
#include "updater/update.h"
#include "updater/updatefixture.h"

#include <QtTest>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

/// The real program that installs, on an installation of the test's own.
class TestUpdater : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void installs();
    void waitsForTheProgram();
    void refusedPackages();
    void programThatDoesNotStart();
    void patience();
    void killedAtAnyInstant();
    void killedWithOneThatCannotBegin();
    void fullDisk();
    void leavesOthersAlone();
    void killedBeforeTheFirstStart();
    void packsOnlyWhatInstalls();

private:
    QString path(const char *name) const { return m_dir->filePath(QLatin1String(name)); }
    QStringList words() const;
    ToolRun update() const;
    QStringList environment() const;
    QStringList ran() const { return QString::fromUtf8(contentOf(path("ran"))).split(u'\n'); }
    QStringList besideInstallation() const;
    void packOneThatHangs() const;
    QList<qint64> hanging() const { return processesWith(path("hangs")); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_install;
    QString m_updater;
};

void TestUpdater::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_install = path("in stall%/morvane");
    m_updater = builtProgram("updater_with_test_key"_s);
    makeInstallation(m_install, "old");
    makeInstallation(path("next/morvane"), "new");
    packFolder(path("next/morvane"), appNumber() + 1, path("package"));
}

QStringList TestUpdater::words() const
{
    return {"-downloadurl="_s +
                QString::fromLatin1(QUrl::fromLocalFile(path("package")).toEncoded()),
            "-downloadscale=5"_s, "-installpath="_s + m_install, "-lock=morvane"_s,
            "-startup="_s + m_install + "/morvane"_s};
}

QStringList TestUpdater::environment() const
{
    return {"XDG_RUNTIME_DIR="_s + m_dir->path(), "XDG_CACHE_HOME="_s + m_dir->path(),
            "XDG_DATA_HOME="_s + m_dir->path()};
}

ToolRun TestUpdater::update() const
{
    return runTool(m_updater, words(), environment());
}

QStringList TestUpdater::besideInstallation() const
{
    return QFileInfo(m_install).dir().entryList(QDir::AllEntries | QDir::Hidden |
                                                QDir::NoDotAndDotDot);
}

// It reads what nobody writes, by a name that no other process has.
void TestUpdater::packOneThatHangs() const
{
    QDir(path("next")).removeRecursively();
    writeTestFile(path("hangs"));
    makeInstallation(path("next/morvane"), "new",
                     "[ \"$1\" = --preuninst ] || exec tail -f '" +
                         QFile::encodeName(path("hangs")) + "' >/dev/null");
    packFolder(path("next/morvane"), appNumber() + 1, path("package"));
}

// The user's files, the settings and the links to the system's tools stay, and nothing else.
void TestUpdater::installs()
{
    writeTestFile(m_install + "/main.ini"_s, "mine");
    writeTestFile(m_install + "/module/我的 文件"_s, "film");
    QVERIFY(QFile::link("/usr/bin/ffprobe"_s, m_install + "/module/ffprobe"_s));
    writeTestFile(m_install + "/module/gone/older/tool"_s);
    writeTestFile(m_install + "/.package-files"_s, "morvane\nmodule/gone/older/tool\n");
    writeTestFile(path("next/morvane/main.ini"), "theirs");
    QVERIFY(QFile::link("/usr/bin/true"_s, path("next/morvane/module/ffmpeg")));
    QVERIFY(QDir().mkpath(m_install + "/films"_s));
    for (const QString &own : {m_install, m_install + "/films"_s})
        QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QVERIFY(QFile::link("part1"_s, path("next/morvane/module/parts")));
    packFolder(path("next/morvane"), appNumber() + 1, path("package"));

    const ToolRun run = update();
    QVERIFY2(run.exitCode == 0, run.err.constData());
    QCOMPARE(versionOf(m_install), QByteArray("new"));
    QCOMPARE(contentOf(m_install + "/main.ini"_s), QByteArray("mine"));
    QCOMPARE(contentOf(m_install + "/module/我的 文件"_s), QByteArray("film"));
    for (const QString &own : {m_install, m_install + "/films"_s})
        QCOMPARE(int(QFile::permissions(own) & 0x0077), 0);
    QVERIFY(!QFile::exists(updateTrialNote(m_install)));
    QCOMPARE(QFile::symLinkTarget(m_install + "/module/ffprobe"_s), "/usr/bin/ffprobe"_s);
    QVERIFY(!QFileInfo(m_install + "/module/ffmpeg"_s).isSymLink());
    QVERIFY(!QFile::exists(m_install + "/module/gone"_s));
    QCOMPARE(besideInstallation(), QStringList({"morvane"_s, "ran"_s}));
    QCOMPARE(contentOf(QFileInfo(m_install).path() + "/ran"_s), QByteArray("new\n"));

    const QByteArray program = "#!/bin/sh\n"
                               "[ \"$1\" = --preuninst ] || : >\"$MORVANE_UPDATE_STARTED\"\n";
    QFile::remove(path("package"));
    writeTestFile(path("package"), packageOf(archiveOf({{"morvane", program, 'f', 0755},
                                                        {"updater", program, 'f', 0755},
                                                        {"main.ini", "theirs"}}),
                                             appNumber() + 1));
    QCOMPARE(update().exitCode, 0);
    QCOMPARE(contentOf(m_install + "/main.ini"_s), QByteArray("mine"));
    QCOMPARE(QDir(m_install + "/module"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({"ffprobe"_s, "我的 文件"_s}));
    QVERIFY(QFile::exists(m_install + "/films"_s));
}

void TestUpdater::waitsForTheProgram()
{
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_dir->path()));
    for (const QString &name : {appCode(), updateLockName(appCode())}) {
        init();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_dir->path()));
        DirectoryLock running = tryNamedLock(name);
        QVERIFY(running.isHeld());
        QProcess updater;
        updater.setProcessEnvironment(environmentWith(environment()));
        updater.start(m_updater, words());
        QVERIFY(!updater.waitForFinished(700));
        QCOMPARE(besideInstallation(), QStringList({"morvane"_s}));
        running = DirectoryLock();
        QVERIFY(updater.waitForFinished());
        QCOMPARE(versionOf(m_install), QByteArray("new"));
    }
}

void TestUpdater::refusedPackages()
{
    const QByteArray good = contentOf(path("package"));
    const auto check = [this](const char *caseName, const QByteArray &package,
                              bool isUnfit = false) {
        const CaseName inCase(caseName);
        QFile::remove(QFileInfo(m_install).path() + "/ran"_s);
        QFile::remove(path("package"));
        if (!package.isEmpty())
            writeTestFile(path("package"), package);
        QCOMPARE(update().exitCode, 1);
        QCOMPARE(versionOf(m_install), QByteArray("old"));
        QTRY_COMPARE(contentOf(QFileInfo(m_install).path() + "/ran"_s), QByteArray("old\n"));
        QTRY_VERIFY(besideInstallation().contains("failed"_s));
        QVERIFY(QFile::remove(QFileInfo(m_install).path() + "/failed"_s));
        QCOMPARE(QFile::remove(QFileInfo(m_install).path() + "/unfit"_s), isUnfit);
        QCOMPARE(besideInstallation(), QStringList({"morvane"_s, "ran"_s}));
    };
    check("missing", {});
    check("unsigned", good.mid(good.indexOf("\n\n") + 2));
    QByteArray tampered = good;
    tampered[good.size() / 2] = char(~good.at(good.size() / 2));
    check("tampered", tampered);
    check("truncated", good.left(good.size() / 2));
    check("not an archive", packageOf("rubbish", appNumber() + 1), true);
    check("without a program", packageOf(archiveOf({{"morvane", "x", 'f', 0755}}), 17), true);
    check("leads outside",
          packageOf(
              archiveOf(
                  {{"morvane", "x", 'f', 0755}, {"updater", "x", 'f', 0755}, {"l", "/etc", 'l'}}),
              17),
          true);
    for (const int version : {appNumber(), appNumber() - 1}) {
        packFolder(path("next/morvane"), version, path("package"));
        check("not newer", contentOf(path("package")));
    }
    m_updater = builtProgram("updater"_s);
    if (QFile::exists(m_updater))
        check("a build without a key", good);
}

void TestUpdater::programThatDoesNotStart()
{
    for (const QByteArray &line : {QByteArray("exit 0"), QByteArray("kill -SEGV $$"),
                                   QByteArray("exec /missing/interpreter")}) {
        init();
        QDir(path("next")).removeRecursively();
        makeInstallation(path("next/morvane"), "new", line);
        packFolder(path("next/morvane"), appNumber() + 1, path("package"));
        QCOMPARE(update().exitCode, 1);
        QCOMPARE(versionOf(m_install), QByteArray("old"));
        QTRY_COMPARE(besideInstallation(),
                     QStringList({"failed"_s, "morvane"_s, "ran"_s, "unfit"_s}));
        QCOMPARE(contentOf(QFileInfo(m_install).path() + "/ran"_s), QByteArray("old\n"));
    }
}

// Of a new program that hangs, and of an old one that goes on running.
void TestUpdater::patience()
{
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_dir->path()));
    packOneThatHangs();
    QString error;
    const UpdaterArguments arguments = UpdaterArguments::parse(words(), error);
    QCOMPARE(error, QString());
    const Update::Patience little{300, 600};
    {
        const DirectoryLock running = tryNamedLock(appCode());
        QCOMPARE(Update(arguments, little).run(), Update::Outcome::GivenUp);
        QCOMPARE(besideInstallation(), QStringList({"morvane"_s}));
    }
    QCOMPARE(Update(arguments, little).run(), Update::Outcome::WentBack);
    QCOMPARE(versionOf(m_install), QByteArray("old"));
    QVERIFY(hanging().isEmpty());
    QTRY_COMPARE(besideInstallation(), QStringList({"failed"_s, "morvane"_s, "ran"_s, "unfit"_s}));
}

// What is found then is one version as a whole, which starts, and the next update works.
void TestUpdater::killedAtAnyInstant()
{
    constexpr int kills = 30;
    int usualMs = 0;
    // The first time is longer than any after it.
    for (const char *unused : {"first", "usual"}) {
        Q_UNUSED(unused)
        init();
        QElapsedTimer whole;
        whole.start();
        QCOMPARE(update().exitCode, 0);
        usualMs = int(whole.elapsed());
    }
    QMap<QByteArray, int> found;
    for (int round = 0; round < kills; ++round) {
        QDir(QFileInfo(m_install).path()).removeRecursively();
        makeInstallation(m_install, "old");
        QProcess updater;
        updater.setProcessEnvironment(environmentWith(environment()));
        updater.start(m_updater, words());
        QVERIFY(updater.waitForStarted());
        QTest::qSleep(1 + QRandomGenerator::global()->bounded(usualMs + 20));
        updater.kill();
        updater.waitForFinished();
        const QByteArray version = versionOf(m_install);
        ++found[version];
        QVERIFY2(!version.isEmpty(), qPrintable("round %1"_s.arg(round)));
        QCOMPARE(runTool(m_install + "/morvane"_s, {}).exitCode, 0);
        QVERIFY(contentOf(QFileInfo(m_install).path() + "/ran"_s).endsWith(version + '\n'));
    }
    qInfo() << kills << "kills within" << usualMs << "ms:" << found;
    QCOMPARE(update().exitCode, 0);
    QCOMPARE(versionOf(m_install), QByteArray("new"));
    QVERIFY(!QFileInfo::exists(updateWorkFolder(m_install)));
}

// Nobody could take that back: so it is in its place at no instant.
void TestUpdater::killedWithOneThatCannotBegin()
{
    QDir(path("next")).removeRecursively();
    makeInstallation(path("next/morvane"), "new", "exec /missing/interpreter");
    packFolder(path("next/morvane"), appNumber() + 1, path("package"));
    QElapsedTimer whole;
    whole.start();
    QCOMPARE(update().exitCode, 1);
    const int usualMs = int(whole.elapsed());
    for (int round = 0; round < 20; ++round) {
        QProcess updater;
        updater.setProcessEnvironment(environmentWith(environment()));
        updater.start(m_updater, words());
        QVERIFY(updater.waitForStarted());
        // Its last part is the one that counts.
        QTest::qSleep(usualMs / 2 + QRandomGenerator::global()->bounded(usualMs / 2));
        updater.kill();
        updater.waitForFinished();
        QCOMPARE(versionOf(m_install), QByteArray("old"));
        QCOMPARE(runTool(m_install + "/morvane"_s, {}).exitCode, 0);
    }
}

// On a small file system of its own, where the new version doesn't fit beside the old one.
void TestUpdater::fullDisk()
{
    const QString space = path("space");
    QVERIFY(QDir().mkpath(space));
    const auto inSpace = [&](int size, const QString &work) {
        const QString script =
            "mount -t tmpfs -o size=%1k none '%2' && cp -a '%3' '%2' && cd '%2' && %4"_s.arg(size)
                .arg(space, m_install, work);
        return runTool("unshare"_s, {"-rm"_s, "sh"_s, "-c"_s, script}, environment());
    };
    if (inSpace(8000, "true"_s).exitCode != 0)
        QSKIP("no file system can be mounted here");
    QStringList quoted;
    for (const QString &word : words())
        quoted += u'\'' + QString(word).replace(m_install, space + "/morvane"_s) + u'\'';
    const QString work = "{ '%1' %2; echo code $?; diff -r '%3' morvane && ls -A; }"_s.arg(
        m_updater, quoted.join(u' '), m_install);
    // 200 files of two pages each, the folders, and hardly more or much more.
    const ToolRun full = inSpace(2300, work);
    QVERIFY2(full.outLines().contains("code 1"_s), full.err.constData());
    QVERIFY2(full.outLines().contains("morvane"_s), full.out.constData());
    QVERIFY(!full.out.contains("-update"));
    QVERIFY(!full.out.contains("differ"));
    QVERIFY(inSpace(8000, work).outLines().contains("code 0"_s));
}

// Links, and folders that this user may not exchange.
void TestUpdater::leavesOthersAlone()
{
    const QString real = m_install;
    QVERIFY(QFile::link(real, path("linked")));
    m_install = path("linked");
    QCOMPARE(update().exitCode, 1);
    QCOMPARE(versionOf(real), QByteArray("old"));
    QVERIFY(QFileInfo(path("linked")).isSymLink());

    QVERIFY(isOwnFolder(real));
    // The administrator could write both: the one is in dpkg's lists, the other in its place.
    QVERIFY(!isOwnFolder("/etc/dpkg"_s) && !isOwnFolder("/usr/share"_s));
    constexpr uid_t somebody = 12345;
    if (::chown(QFile::encodeName(real).constData(), somebody, somebody) != 0)
        QSKIP("only the administrator can give a folder away");
    m_install = real;
    QCOMPARE(update().exitCode, 1);
    QCOMPARE(versionOf(real), QByteArray("old"));
}

// By the note that the exchange leaves the next one knows that nobody has seen the new one start.
void TestUpdater::killedBeforeTheFirstStart()
{
    packOneThatHangs();
    QProcess updater;
    updater.setProcessEnvironment(environmentWith(environment()));
    updater.start(m_updater, words());
    QTRY_COMPARE_WITH_TIMEOUT(hanging().size(), 1, 20000);
    updater.kill();
    QVERIFY(updater.waitForFinished());
    QCOMPARE(hanging().size(), 1);
    ::kill(pid_t(hanging().first()), SIGKILL);
    QCOMPARE(versionOf(m_install), QByteArray("new"));
    QVERIFY(isUpdateOnTrial(m_install));
    QVERIFY(!beginUpdateTrial(m_install));
    QVERIFY(beginUpdateTrial(m_install));

    QCOMPARE(update().exitCode, 1);
    QCOMPARE(versionOf(m_install), QByteArray("old"));
    QTRY_COMPARE(besideInstallation(), QStringList({"failed"_s, "morvane"_s, "ran"_s}));
    QVERIFY(!isUpdateOnTrial(m_install));
}

// What a build leaves in a folder of a shared group is put right; the rest is told before signing.
void TestUpdater::packsOnlyWhatInstalls()
{
    const QString folder = path("next/morvane");
    QFile::remove(folder + "/updater"_s);
    QVERIFY(QFile::copy(m_updater, folder + "/updater"_s));
    const QString shared = folder + "/module/part1"_s;
    QCOMPARE(::chmod(QFile::encodeName(shared).constData(), 02775), 0);
    const auto packed = [&] {
        QFile::remove(path("package"));
        const ToolRun run = runPack(folder, appNumber() + 1, path("package"));
        return run.exitCode == 0 && QFile::exists(path("package")) ? QByteArray() : run.err + '.';
    };
    QCOMPARE(packed(), QByteArray());
    QCOMPARE(update().exitCode, 0);

    const QString odd = folder + "/module/odd"_s;
    QVERIFY(QFile::link("part1/../part2"_s, odd));
    QVERIFY2(packed().contains("module/odd"), packed().constData());
    QVERIFY(!QFile::exists(path("package")));
    QVERIFY(QFile::remove(odd));
    for (int number = 0; number < 20000; ++number)
        writeTestFile(shared + "/%1"_s.arg(number), {});
    QVERIFY(packed().contains("太多"));
    QVERIFY(!QFile::exists(path("package")));
}

QTEST_GUILESS_MAIN(TestUpdater)
#include "tst_updater.moc"
