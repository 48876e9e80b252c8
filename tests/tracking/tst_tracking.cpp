// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/DataTracker/a360sem.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "platform/computerinfo.h"
#include "support/scriptedserver.h"
#include "support/utf8.h"

#include <QtTest>

namespace {

const std::string taken = R"({"code":"200"})";
const std::string registered =
    R"({"message":"success","ssid":"s1","bd_did":"b","cd":"c","device_id":7300000000001,)"
    R"("install_id":12,"new_user":0})";

OskTrackerConfig oskConfig(const ScriptedServer &server, int flushIntervalMs = 600000)
{
    return {QString::fromStdString(server.host()), flushIntervalMs, "oa"_s, "渠道"_s};
}

VolcTrackerConfig volcConfig(const ScriptedServer &server)
{
    return {QString::fromStdString(server.host()), QString(32, u'a'), "pack"_s, "web"_s};
}

QJsonDocument bodyOf(const httplib::Request &request)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(request.body));
}

// Each with a blank behind it.
QString codesOf(const httplib::Request &request)
{
    QString codes;
    for (const QJsonValue event : bodyOf(request)["events"_s].toArray())
        codes += event["event_code"_s].toString() + u' ';
    return codes;
}

} // namespace

class TestTracking : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private slots:
    void oskDocument();
    void oskBatchAndCrash();
    void oskFlushTimer();
    void oskAttempts();
    void volcRegistration();
    void volcRefused();
    void volcSingleEvent();
    void pageEvents();
    void marketing();

private:
    static inline std::unique_ptr<ScriptedServer> m_earlyServer;
    static inline std::unique_ptr<OskDataTracker> m_earlyTracker;
};

// An event from before the application object waits for the timer that a later one makes.
void TestTracking::initMain()
{
    m_earlyServer.reset(new ScriptedServer(taken));
    m_earlyTracker.reset(new OskDataTracker(oskConfig(*m_earlyServer, 50)));
    m_earlyTracker->trackStart();
}

void TestTracking::oskDocument()
{
    ScriptedServer server(taken);
    {
        OskDataTracker osk(oskConfig(server));
        osk.trackInstall();
        osk.setUserId("用户7"_s);
        osk.trackTableEvent(13, {{"n"_s, 5}, {"ok"_s, true}});
        osk.trackTableEvent(9);
        QCOMPARE(server.count(), 0);
    }
    QCOMPARE(server.count(), 1);
    const httplib::Request request = server.requests().front();
    QCOMPARE(request.path.c_str(), "/realtimeaidataprobe/v/v/morvzh");
    QString text = QString::fromStdString(request.body);
    const QString time = QDate::currentDate().toString("\"yyyy-MM-dd"_s) + " ..:..:.."_s;
    text.replace(QRegularExpression(time + "\\.\\d{3}\""_s), "MS"_s);
    text.replace(QRegularExpression(time + "\\.\\d{2}\""_s), "CS"_s);
    const QString expected =
        R"({"common":{"android_id":"%1","app_id":"301801","app_version":"%2","imei":"",)"
        R"("market_name":"渠道","message_id":"1","oaid":"oa","os_system":"3",)"
        R"("os_version":"%3","product_name":"3018","upload_time":CS,"uuid":"%1"},"events":[)"
        R"({"event_code":"app_install","event_name":"安装","event_type":"install","ts":MS,)"
        R"("user_id":""},)"
        R"({"event_code":"shipinzhuanhuan_page_view_shipinzhuanhuan",)"
        R"("event_name":"视频转换展示","event_type":"show",)"
        R"("extra_event_map":{"n":"5","ok":"true"},"page_id":"shipinzhuanhuan_page",)"
        R"("ts":MS,"user_id":"用户7"}]})"_s.arg(Win32Env::ComputerInfo::getDeviceID(), appVersion(),
                                                Win32Env::ComputerInfo::systemVersion());
    QCOMPARE(text, expected);
}

void TestTracking::oskBatchAndCrash()
{
    ScriptedServer server(taken);
    OskDataTracker osk(oskConfig(server));
    for (int i = 0; i < 29; ++i)
        osk.trackTableEvent(1);
    QTest::qWait(100); // nothing may be sent
    QCOMPARE(server.count(), 0);
    osk.trackLogin();
    QTRY_COMPARE(server.count(), 1);
    QCOMPARE(codesOf(server.requests().front()).count(u' '), 30);

    osk.trackStart();
    std::thread([&osk]() { osk.trackCrash(); }).join();
    osk.trackStart();
    osk.stop();
    QCOMPARE(server.count(), 2);
    QCOMPARE(codesOf(server.requests().back()), "app_start benkui_page_custom_penkui "_s);
}

void TestTracking::oskFlushTimer()
{
    QTest::qWait(100); // nothing may be sent
    QCOMPARE(m_earlyServer->count(), 0);
    m_earlyTracker->trackLogin();
    QTRY_COMPARE(m_earlyServer->count(), 1);
    QCOMPARE(codesOf(m_earlyServer->requests().front()), "app_start login "_s);
    // Ticks with nothing to send.
    const auto *timer = qApp->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(timer);
    QSignalSpy ticks(timer, &QTimer::timeout);
    QTRY_VERIFY(ticks.size() >= 2);
    m_earlyTracker->trackLogin();
    QTRY_VERIFY(m_earlyServer->count() >= 2);
    m_earlyTracker.reset();
    QCOMPARE(m_earlyServer->count(), 2);
    QCOMPARE(codesOf(m_earlyServer->requests().back()), "login "_s);
}

void TestTracking::oskAttempts()
{
    // The last one breaks off.
    const std::pair<std::string, int> rows[] = {
        {taken, 1}, {R"({"code":"500"})", 1}, {R"({"code":"404"})", 2}, {"<html>", 2}, {"", 2}};
    for (const auto &row : rows) {
        ScriptedServer server(row.first);
        OskDataTracker osk(oskConfig(server));
        osk.trackStart();
        osk.stop();
        QVERIFY2(server.count() == row.second, row.first.c_str());
    }
}

void TestTracking::volcRegistration()
{
    QSemaphore gate;
    ScriptedServer server([&gate](const httplib::Request &) {
        gate.acquire();
        return registered;
    });
    VolcDataTracker volc(volcConfig(server));
    volc.setUp({{"user_unique_id"_s, "用户7"_s}});
    for (int i = 1; i <= 21; ++i)
        volc.event(QString::number(i));
    QTRY_COMPARE(server.count(), 1);
    gate.release(2);
    volc.stop();
    volc.event("late"_s);
    QCOMPARE(server.count(), 2);

    const httplib::Request first = server.requests().front();
    const QString id = Win32Env::ComputerInfo::getDeviceID();
    QCOMPARE(first.path.c_str(), "/service/2/device_register");
    QCOMPARE(first.get_header_value("Content-Type").c_str(), "Content-Type");
    const QString registration =
        R"({"header":{"_device_id":"%1","aid":10000023,"app_version":"1.0.0",)"
        R"("openudid":"%1","os":"Android"},"user":{"user_unique_id":"7"}})"_s;
    QCOMPARE(QString::fromStdString(first.body), registration.arg(id));

    const httplib::Request list = server.requests().back();
    QCOMPARE(list.path.c_str(), "/v2/event/list");
    QCOMPARE(list.get_header_value("X-MCS-AppKey"), std::string(32, 'a'));
    const QJsonArray documents = bodyOf(list).array();
    QCOMPARE(documents.size(), 20);
    for (int i = 0; i < documents.size(); ++i)
        QCOMPARE(documents[i]["events"_s][0]["event"_s].toString(), QString::number(i + 2));
}

void TestTracking::volcRefused()
{
    ScriptedServer server(R"({"message":"no"})");
    VolcDataTracker volc(volcConfig(server));
    volc.event("launch"_s);
    volc.stop();
    QCOMPARE(server.count(), 1);
}

void TestTracking::volcSingleEvent()
{
    ScriptedServer server(registered);
    VolcDataTracker volc(volcConfig(server));
    volc.setHeader({{"custom"_s, R"({"own":"x","os_name":"y"})"_s}});
    volc.eventFromJson("启动"_s, R"({"a":"墨","n":[1]})"_s);
    QTRY_COMPARE(server.count(), 2);
    volc.eventFromJson("bad"_s, "[1"_s);
    volc.stop();
    QCOMPARE(server.count(), 3);

    const httplib::Request request = server.requests().at(1);
    QCOMPARE(request.path.c_str(), "/v2/event/json");
    QVERIFY(!bodyOf(request).isNull());
    // JSON in JSON, without the marks of its quotes.
    const QString text = QString::fromStdString(request.body).remove(u'\\');
    const QRegularExpression expected(
        R"(^\{"events":\[\{"event":"启动","local_time_ms":\d{13},"params":"\{"a":"墨","n":\[1\]\}"\}\],)"
        R"("header":\{"_device_id":"[^"]+","aid":10000023,"app_version":"1.0.0","bd_did":"b",)"
        R"("cd":"c","custom":"\{"_device_id":"[^"]+","app_channel":"web","app_name":"3018",)"
        R"("app_package":"pack","app_version":"[\d.]+","os_bit":"\d\d","os_name":"windows",)"
        R"("os_version":"[^"]+","own":"x","resolution":"\d+x\d+"\}","device_id":7300000000001,)"
        R"("install_id":12,"new_user":0,"openudid":"[^"]+","os":"Android","ssid":"s1"\},)"
        R"("user":\{"ssid":"s1","user_unique_id":"s1"\}\}$)"_s);
    QVERIFY2(expected.match(text).hasMatch(), qPrintable(text));
    QVERIFY(server.requests().at(2).body.find(R"("params":"{}")") != std::string::npos);
}

void TestTracking::pageEvents()
{
    ScriptedServer collector(taken);
    ScriptedServer service(registered);
    OskDataTracker osk(oskConfig(collector));
    VolcDataTracker volc(volcConfig(service));
    trackEvent(MediaFunction::Gif, "video_convert_start"_s, {}, osk, volc);
    trackEvent(MediaFunction::Screencap, "button_click"_s, {{"k"_s, 1}}, osk, volc);
    volc.stop();
    osk.stop();
    std::string bodies;
    for (const httplib::Request &request : service.requests())
        bodies += request.body;
    QVERIFY(bodies.find(R"({\"current_page\":\"视频转GIF\"})") != std::string::npos);
    QVERIFY(bodies.find(R"({\"button_click\":\"屏幕录像\",\"k\":1})") != std::string::npos);
    QCOMPARE(codesOf(collector.requests().front()), "user_crux_behavior "_s);
}

void TestTracking::marketing()
{
#ifdef __SANITIZE_THREAD__
    QSKIP("Qt's network thread is built without the sanitizer");
#endif
    ScriptedServer server(taken);
    const QString host = QString::fromStdString(server.host() + '/');
    A360Sem other({host, "3600"_s, "c"_s});
    A360Sem sem({host, "360"_s, "c"_s});
    other.report("OTHER"_s);
    sem.report("REGISTERED"_s);
    QTRY_COMPARE(server.count(), 1);
    // As at an installation, without an event loop.
    sem.finish(std::chrono::seconds(20));
    sem.report("REGISTERED"_s);
    sem.finish(std::chrono::seconds(20));
    QCOMPARE(server.count(), 2);
    const httplib::Request request = server.requests().front();
    QCOMPARE(request.path.c_str(), "/api/point/postDataTo360Api");
    QCOMPARE(request.get_header_value("Content-Type").c_str(), "application/x-www-form-urlencoded");
    // The server takes the body of a form apart.
    const httplib::Params expected = {
        {"fromChanncel", "360"}, {"qhclick", "c"}, {"event", "REGISTERED"}};
    QCOMPARE(request.params, expected);
}

QTEST_GUILESS_MAIN(TestTracking)
#include "tst_tracking.moc"
