// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "support/casename.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "updater/rawserver.h"
#include "updater/standin.h"

#include <QtTest>

#include <csignal>

#include <sys/resource.h>

/// What servers may send, as the answer of the check and as a package, and what comes of it.
class TestUpdateAnswers : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_standIn = std::make_unique<StandIn>(); }
    void checkAnswers();
    void checkOfBadServers();
    void certificates();
    void downloadsThatFail();
    void redirects();

private:
    std::unique_ptr<StandIn> m_standIn;
};

void TestUpdateAnswers::checkAnswers()
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

void TestUpdateAnswers::checkOfBadServers()
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
void TestUpdateAnswers::certificates()
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

void TestUpdateAnswers::downloadsThatFail()
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

void TestUpdateAnswers::redirects()
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

    // To a safer scheme, but never to a less safe one.
    const auto leadsTo = [&](const QString &address, bool isSecret) {
        const RawServer from(
            "HTTP/1.1 302 F\r\nContent-Length: 0\r\nLocation: " + address.toLatin1() + "\r\n\r\n",
            RawServer::Then::Close, isSecret);
        QFile::remove(target);
        MiniDownloadObject *handle = downloader.download(from.address(), target, false);
        QSignalSpy gone(handle, &QObject::destroyed);
        return gone.wait(20000) && contentOf(target) == "safe";
    };
    const QByteArray safe = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nsafe";
    const RawServer plain(safe, RawServer::Then::Close);
    const RawServer secret(safe, RawServer::Then::Close, true);
    QVERIFY(leadsTo(secret.address(), false));
    QVERIFY(leadsTo(secret.address(), true));
    QVERIFY(!leadsTo(plain.address(), true));
}

QTEST_GUILESS_MAIN(TestUpdateAnswers)
#include "tst_updateanswers.moc"
