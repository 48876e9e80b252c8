// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "platform/namedlock.h"
#include "support/casename.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "updater/standin.h"
#include "updater/updatefixture.h"

#include <QtTest>

/// The program's half of an update, from start to start; what installs is a stand-in here.
class TestAppUpdater : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void forcedThroughTwoStarts();
    void notAPackage();
    void pendingThatIsLeftAlone();
    void startsThatAskNobody();
    void lateAnswer();
    void askedForInstead();
    void updaterThatCanNotStart();
    void confirmsStart();
    void trialThatNobodyWatched();

private:
    void runToIdle(AppUpdater &updater) const;
    static void writeIni(bool run, const QString &package, int force);

    std::unique_ptr<StandIn> m_standIn;
};

void TestAppUpdater::init()
{
    m_standIn = std::make_unique<StandIn>();
}

void TestAppUpdater::runToIdle(AppUpdater &updater) const
{
    QSignalSpy idle(&updater, &AppUpdater::idle);
    QVERIFY(!updater.run());
    QVERIFY(!idle.isEmpty() || idle.wait());
}

void TestAppUpdater::writeIni(bool run, const QString &package, int force)
{
    QSettings ini(updateDir() + "/update.ini"_s, QSettings::IniFormat);
    ini.setValue("Update/isforce"_s, force);
    ini.setValue("Update/package"_s, package);
    if (run)
        ini.setValue("Update/run"_s, true);
}

void TestAppUpdater::forcedThroughTwoStarts()
{
    const std::string package = packageOf(archiveOf({{"a"}}), 17).toStdString();
    std::string link = "/first";
    const ScriptedServer server([&](const httplib::Request &request) {
        const std::string host = "http://" + request.get_header_value("Host");
        return request.path == link ? package : answerOf(1, host + link);
    });
    AppUpdater first(m_standIn->settings(server.host()));
    QSignalSpy progress(&first, &AppUpdater::downloadProgress);
    runToIdle(first);
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.last().at(0).toLongLong(), qlonglong(package.size()));
    QCOMPARE(updateFiles(), QStringList({"update.ini"_s, "updatePackage.exe"_s}));
    const QString fetched = updateDir() + "/updatePackage.exe"_s;
    QCOMPARE(contentOf(fetched).toStdString(), package);
    {
        const QSettings ini(updateDir() + "/update.ini"_s, QSettings::IniFormat);
        QCOMPARE(ini.value("Update/isforce"_s).toInt(), 1);
        QCOMPARE(ini.value("Update/package"_s).toString(), fetched);
        const QString time = ini.value("Update/datetime"_s).toString();
        QVERIFY(QDateTime::fromString(time, "yyyy-MM-dd HH:mm:ss"_s).isValid());
    }

    AppUpdater second(m_standIn->settings(server.host()));
    QVERIFY(second.run());
    const UpdateSettings setup = m_standIn->settings({});
    QCOMPARE(m_standIn->told(),
             QStringList({"-downloadurl=file://"_s + fetched, "-downloadscale=5"_s,
                          "-installpath="_s + setup.installFolder(), "-lock=morvane"_s,
                          "-startup="_s + setup.program}));
    QVERIFY(QFileInfo(updateDir() + "/updater.exe"_s).isExecutable());
    QVERIFY(tryNamedLock(updateLockName(appCode())).isHeld());
    QCOMPARE(server.count(), 2);

    // This version is still here, since the disk was full, say: it is tried again.
    const QStringList fetchedFiles{"update.ini"_s, "updatePackage.exe"_s};
    const auto nextStart = [&](int requests, const QStringList &files) {
        const int before = server.count();
        AppUpdater updater(m_standIn->settings(server.host()));
        runToIdle(updater);
        QCOMPARE(server.count() - before, requests);
        QCOMPARE(updateFiles(), files);
    };
    nextStart(2, fetchedFiles);
    QVERIFY(AppUpdater(m_standIn->settings(server.host())).run());
    // Not when the package itself was found unfit; another one is.
    qputenv(updateUnfitVariable, "1");
    nextStart(1, {});
    qunsetenv(updateUnfitVariable);
    link = "/second";
    nextStart(2, fetchedFiles);
}

// A page that a hotel sends in the place of the package says nothing of the next time.
void TestAppUpdater::notAPackage()
{
    std::string body = "<html>";
    const ScriptedServer server([&](const httplib::Request &request) {
        const std::string host = "http://" + request.get_header_value("Host");
        return request.path == "/p" ? body : answerOf(1, host + "/p");
    });
    AppUpdater first(m_standIn->settings(server.host()));
    runToIdle(first);
    QCOMPARE(updateFiles(), QStringList());
    body = packageOf(archiveOf({{"a"}}), 17).toStdString();
    AppUpdater second(m_standIn->settings(server.host()));
    runToIdle(second);
    QCOMPARE(updateFiles().size(), 2);
}

void TestAppUpdater::pendingThatIsLeftAlone()
{
    const ScriptedServer server(answerOf(0, "http://127.0.0.1:1/p"));
    const auto check = [&](const char *caseName, bool run, const QString &package, int force) {
        const CaseName inCase(caseName);
        writeIni(run, package, force);
        writeTestFile(updateDir() + "/folder/old"_s);
        AppUpdater updater(m_standIn->settings(server.host()));
        runToIdle(updater);
        QCOMPARE(updateFiles(), QStringList());
        QVERIFY(!m_standIn->wasStarted());
    };
    check("has run", true, "/p"_s, 1);
    check("no package", false, QString(), 1);
    check("not forced", false, "/p"_s, 0);
    check("gone", false, "/p"_s, 1);
    const QString package = m_standIn->path("package");
    writeTestFile(package, packageOf(archiveOf({{"a"}}), appNumber()));
    check("installed otherwise meanwhile", false, package, 1);
}

void TestAppUpdater::startsThatAskNobody()
{
    const ScriptedServer server(answerOf(1, "http://127.0.0.1:1/p"));
    {
        UpdateSettings keyless = m_standIn->settings(server.host());
        keyless.key.clear();
        QVERIFY(!AppUpdater(keyless).run());
        const DirectoryLock other = tryNamedLock(updateLockName(appCode()));
        QVERIFY(!AppUpdater(m_standIn->settings(server.host())).run());
    }
    QVERIFY(QFile::remove(m_standIn->path("program/updater")));
    QVERIFY(!AppUpdater(m_standIn->settings(server.host())).run());
    QTest::qWait(0);
    QCOMPARE(server.count(), 0);
}

// Of the start's check, when the user has asked for the update meanwhile.
void TestAppUpdater::lateAnswer()
{
    QSemaphore mayAnswer;
    const ScriptedServer server([&mayAnswer](const httplib::Request &request) -> std::string {
        if (request.path == "/p")
            return "package";
        mayAnswer.acquire();
        return answerOf(0, {});
    });
    AppUpdater updater(m_standIn->settings(server.host()));
    QSignalSpy idle(&updater, &AppUpdater::idle);
    QVERIFY(!updater.run());
    MiniDownloadObject *download =
        updater.downloadAsked({{}, {}, QString::fromStdString(server.host()) + "/p"_s, 0});
    QVERIFY(download != nullptr);
    QVERIFY(!tryNamedLock(updateLockName(appCode())).isHeld());
    QSignalSpy finished(download, &MiniDownloadObject::downloadFinished);
    QSignalSpy gone(download, &QObject::destroyed);
    const bool isFetched = finished.wait() && (!gone.isEmpty() || gone.wait());
    mayAnswer.release(2);
    QVERIFY(isFetched);
    QVERIFY(!idle.isEmpty() || idle.wait());
    UpdateRecord record;
    QVERIFY(updater.check(record));
    QCOMPARE(contentOf(AppUpdater::askedPackage()), QByteArray("package"));
    QVERIFY(tryNamedLock(updateLockName(appCode())).isHeld());
}

// What was fetched without asking isn't installed after it.
void TestAppUpdater::askedForInstead()
{
    const QString package = m_standIn->path("package");
    writeTestFile(package, packageOf(archiveOf({{"a"}}), 17));
    writeIni(false, package, 1);
    writeTestFile(AppUpdater::askedPackage(), contentOf(package));
    QVERIFY(AppUpdater(m_standIn->settings({})).launchUpdater(AppUpdater::askedPackage()));
    QVERIFY(!m_standIn->told().isEmpty());
    QVERIFY(!AppUpdater(m_standIn->settings({})).run());
}

// The package stays for the next start, and isn't fetched again for it.
void TestAppUpdater::updaterThatCanNotStart()
{
    const ScriptedServer server([](const httplib::Request &request) {
        return answerOf(1, "http://" + request.get_header_value("Host") + "/p");
    });
    const QString package = m_standIn->path("package");
    writeTestFile(package, packageOf(archiveOf({{"a"}}), 17));
    writeIni(false, package, 1);
    QSettings(updateDir() + "/update.ini"_s, QSettings::IniFormat)
        .setValue("Update/link"_s, QString::fromStdString(server.host()) + "/p"_s);
    const QString obstacle = updateDir() + "/updater.exe/x"_s;
    writeTestFile(obstacle);
    AppUpdater updater(m_standIn->settings(server.host()));
    QSignalSpy idle(&updater, &AppUpdater::idle);
    QVERIFY(!updater.run());
    QVERIFY(!tryNamedLock(updateLockName(appCode())).isHeld());
    QVERIFY(!idle.isEmpty() || idle.wait());
    QCOMPARE(server.count(), 1);
    QVERIFY(QDir(QFileInfo(obstacle).path()).removeRecursively());
    QVERIFY(AppUpdater(m_standIn->settings(server.host())).run());
}

// The one that installed it is told; what a killed one left goes.
void TestAppUpdater::confirmsStart()
{
    AppUpdater updater(m_standIn->settings({}));
    const QString work = updateWorkFolder(m_standIn->settings({}).installFolder());
    writeTestFile(work + "/other/morvane"_s);
    {
        const DirectoryLock installing = tryNamedLock(updateLockName(appCode()));
        QCOMPARE(updater.confirmStart(), QString());
    }
    qputenv(updateStartedVariable, QFile::encodeName(work + "/started"_s));
    qputenv(updateFailedVariable, "没有成功");
    QCOMPARE(updater.confirmStart(), "没有成功"_s);
    QVERIFY(QFile::exists(work + "/started"_s));
    QVERIFY(QFile::exists(work + "/other/morvane"_s));
    QVERIFY(!qEnvironmentVariableIsSet(updateStartedVariable));
    QCOMPARE(updater.confirmStart(), QString());
    QTRY_VERIFY(!QFile::exists(work));
}

// The second start of a new program whose first one came to nothing has the old one put back.
void TestAppUpdater::trialThatNobodyWatched()
{
    const QString folder = m_standIn->settings({}).installFolder();
    const auto starts = [&] { return AppUpdater(m_standIn->settings({})).run(); };
    const auto beginTrial = [&] {
        writeTestFile(updateTrialNote(folder), {});
        writeTestFile(updateOtherFolder(folder) + "/morvane"_s);
        QVERIFY(!starts());
    };
    beginTrial();
    AppUpdater(m_standIn->settings({})).confirmStart();
    QVERIFY(!starts() && !starts());
    QTRY_VERIFY(!QFile::exists(updateWorkFolder(folder)));
    beginTrial();
    {
        const DirectoryLock installing = tryNamedLock(updateLockName(appCode()));
        QVERIFY(!starts());
    }
    qputenv(updateFailedVariable, "x");
    QVERIFY(!starts());
    qunsetenv(updateFailedVariable);
    QVERIFY(!m_standIn->wasStarted());
    QVERIFY(starts());
    QVERIFY(!m_standIn->told().isEmpty());
}

QTEST_GUILESS_MAIN(TestAppUpdater)
#include "tst_appupdater.moc"
