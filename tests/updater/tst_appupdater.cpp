// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "platform/namedlock.h"
#include "support/casename.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "updater/rawserver.h"
#include "updater/standin.h"
#include "updater/updatefixture.h"

#include <QtTest>

#include <csignal>

#include <sys/resource.h>

/// The program's half: the check and the downloads; what installs is a stand-in here.
class TestAppUpdater : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void checkAnswers();
    void checkOfBadServers();
    void certificates();
    void forcedThroughTwoStarts();
    void pendingThatIsLeftAlone();
    void startsThatAskNobody();
    void downloadsThatFail();
    void redirects();
    void confirmsStart();

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

void TestAppUpdater::checkAnswers()
{
    const auto check = [this](const char *caseName, const std::string &answer, bool works) {
        const CaseName inCase(caseName);
        const ScriptedServer server(answer);
        AppUpdater updater(m_standIn->settings(server.host()));
        UpdateRecord record;
        QCOMPARE(updater.check(record), works);
        QCOMPARE(server.count(), 1);
        QCOMPARE(QString::fromStdString(server.requests().front().target),
                 "/svc/check/upgrade/%1/pc_x64?code=16"_s.arg(appId()));
        QCOMPARE(record.apkLink, works ? "http://x/p"_s : QString());
        QCOMPARE(record.forceUpgrade, works ? 2 : 0);
        if (works)
            QCOMPARE(record.title + record.tip, "墨泉 2.1更快\n更稳"_s);
    };
    const std::string good = answerOf(2, "http://x/p");
    check("good", good, true);
    check("code 1", std::string(good).replace(8, 1, "1"), false);
    check("code as a text", std::string(good).replace(8, 1, "\"0\""), false);
    check("data isn't an object", R"({"code":0,"data":[]})", false);
    check("no result", R"({"code":0,"data":{"result":"x"}})", false);
    check("cut off", good.substr(0, good.size() - 2), false);
    check("nothing", " ", false);
    check("broken off", "", false);
}

void TestAppUpdater::checkOfBadServers()
{
    const ScriptedServer good(answerOf(0, "http://x/p"));
    const auto check = [this](const char *caseName, const QByteArray &answer,
                              RawServer::Then then) {
        const CaseName inCase(caseName);
        const RawServer server(answer, then);
        AppUpdater updater(m_standIn->settings(server.address("").toStdString()));
        UpdateRecord record;
        QVERIFY(!updater.check(record));
    };
    const QByteArray body = QByteArray::fromStdString(answerOf(0, "http://x/p"));
    check("error",
          "HTTP/1.1 500 No\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
              body,
          RawServer::Then::Close);
    check("redirect",
          "HTTP/1.1 302 F\r\nContent-Length: 0\r\nLocation: " +
              QByteArray::fromStdString(good.host()) + "/\r\n\r\n",
          RawServer::Then::Close);
    check("endless", "HTTP/1.1 200 OK\r\n\r\n", RawServer::Then::Repeat);
    check("no HTTP", "hello\r\n\r\n", RawServer::Then::Close);
    QCOMPARE(good.count(), 0);

    UpdateRecord record;
    AppUpdater nowhere(m_standIn->settings("http://127.0.0.1:1"));
    QVERIFY(!nowhere.check(record));
    AppUpdater strange(m_standIn->settings("file:///tmp"));
    QVERIFY(!strange.check(record));
}

// A server whose certificate nobody vouches for is believed only where the settings say so.
void TestAppUpdater::certificates()
{
    const QByteArray body = QByteArray::fromStdString(answerOf(0, "http://x/p"));
    const RawServer server("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                               "\r\n\r\n" + body,
                           RawServer::Then::Close, true);
    const QString target = m_standIn->path("file");
    for (const bool verifies : {true, false}) {
        UpdateSettings setup = m_standIn->settings(server.address("").toStdString());
        setup.verifiesPeer = verifies;
        AppUpdater updater(setup);
        UpdateRecord record;
        QCOMPARE(updater.check(record), !verifies);

        MiniDownloader downloader;
        MiniDownloadObject *download = downloader.download(server.address(), target, verifies);
        QSignalSpy gone(download, &QObject::destroyed);
        QVERIFY(gone.wait());
        QCOMPARE(contentOf(target), verifies ? QByteArray() : body);
    }
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

    // This version is still here: the same package isn't fetched again, another one is.
    AppUpdater third(m_standIn->settings(server.host()));
    runToIdle(third);
    QCOMPARE(updateFiles(), QStringList());
    QCOMPARE(server.count(), 3);
    link = "/second";
    AppUpdater fourth(m_standIn->settings(server.host()));
    runToIdle(fourth);
    QCOMPARE(updateFiles(), QStringList({"update.ini"_s, "updatePackage.exe"_s}));
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

void TestAppUpdater::downloadsThatFail()
{
    const QString target = m_standIn->path("file");
    const auto check = [&](const char *caseName, const QByteArray &answer, RawServer::Then then) {
        const CaseName inCase(caseName);
        const RawServer server(answer, then);
        MiniDownloader downloader;
        downloader.setLimit(3 * 1024 * 1024);
        MiniDownloadObject *download = downloader.download(server.address(), target);
        QVERIFY(download != nullptr);
        QSignalSpy failed(download, &MiniDownloadObject::downloadError);
        QSignalSpy gone(download, &QObject::destroyed);
        QVERIFY(failed.wait());
        QVERIFY(!gone.isEmpty() || gone.wait());
        QVERIFY(!QFile::exists(target) && !QFile::exists(target + ".part"_s));
    };
    using Then = RawServer::Then;
    check("missing", "HTTP/1.1 404 No\r\nContent-Length: 2\r\n\r\nno", Then::Close);
    check("shorter than told", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\npart", Then::Close);
    check("endless", "HTTP/1.1 200 OK\r\n\r\n", Then::Repeat);
    check("endless in small pieces", "HTTP/1.1 200 OK\r\nContent-Length: 9999999999\r\n\r\n",
          Then::Repeat);
    check("to a file", "HTTP/1.1 302 F\r\nLocation: file:///etc/passwd\r\n\r\n", Then::Close);
    check("to another scheme", "HTTP/1.1 302 F\r\nLocation: ftp://127.0.0.1/p\r\n\r\n",
          Then::Close);

    // As on a full disk.
    rlimit usual{};
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &usual) == 0 && ::signal(SIGXFSZ, SIG_IGN) != SIG_ERR);
    const rlimit low{1024 * 1024, usual.rlim_max};
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &low) == 0);
    check("full disk", "HTTP/1.1 200 OK\r\nContent-Length: 2000000\r\n\r\n", Then::Repeat);
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &usual) == 0);

    MiniDownloader downloader;
    for (const char *link : {"", "file:///etc/passwd", "ftp://127.0.0.1/p", "data:,x", "http:"})
        QVERIFY2(downloader.download(QLatin1String(link), target) == nullptr, link);
    QVERIFY(QDir().mkpath(target + ".part/x"_s));
    QVERIFY(downloader.download("http://127.0.0.1:1/p"_s, target) == nullptr);
}

void TestAppUpdater::redirects()
{
    const ScriptedServer server("whole");
    const QString target = m_standIn->path("file");
    writeTestFile(target, "old");
    const RawServer other("HTTP/1.1 302 F\r\nContent-Length: 0\r\nLocation: " +
                              QByteArray::fromStdString(server.host()) + "/p\r\n\r\n",
                          RawServer::Then::Close);
    MiniDownloader downloader;
    MiniDownloadObject *download = downloader.download(other.address(), target);
    QSignalSpy finished(download, &MiniDownloadObject::downloadFinished);
    QVERIFY(finished.wait());
    QCOMPARE(contentOf(target), QByteArray("whole"));
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

QTEST_GUILESS_MAIN(TestAppUpdater)
#include "tst_appupdater.moc"
