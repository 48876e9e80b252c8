// SPDX-License-Identifier: MIT
#include "http/httptaskmanager.h"
#include "support/scriptedserver.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <future>
#include <optional>

using Params = std::map<std::string, std::string>;

namespace {

/// What callbacks got, on whatever thread: "code name response;", the name being the URL's end.
class Outcomes
{
public:
    bool add(int code, const std::string &response, const HttpTask &task)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_text += std::to_string(code) + ' ' + task.url.substr(task.url.rfind('/') + 1) + ' ' +
                  response + ';';
        return true;
    }
    QByteArray text() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return QByteArray::fromStdString(m_text);
    }
    HttpTask task(int method, const std::string &url)
    {
        HttpTask task;
        task.method = method;
        task.url = url;
        task.callback = [this](int code, const std::string &response, const HttpTask &done) {
            return add(code, response, done);
        };
        return task;
    }

private:
    mutable std::mutex m_mutex;
    std::string m_text;
};

/// Answers one request with these bytes, whatever it is, and closes the connection.
class RawServer
{
public:
    explicit RawServer(const QByteArray &answer)
    {
        std::promise<quint16> promise;
        std::future<quint16> port = promise.get_future();
        m_thread = std::thread([answer, told = std::move(promise)]() mutable {
            constexpr int limitMs = 20000;
            QTcpServer server;
            server.listen(QHostAddress::LocalHost);
            told.set_value(server.serverPort());
            if (!server.waitForNewConnection(limitMs))
                return;
            QTcpSocket *socket = server.nextPendingConnection();
            socket->waitForReadyRead(limitMs);
            socket->write(answer);
            socket->disconnectFromHost();
            if (socket->state() != QAbstractSocket::UnconnectedState)
                socket->waitForDisconnected(limitMs);
        });
        m_url = "http://127.0.0.1:" + std::to_string(port.get());
    }
    ~RawServer() { m_thread.join(); }
    Q_DISABLE_COPY(RawServer)

    std::string url() const { return m_url; }

private:
    std::thread m_thread;
    std::string m_url;
};

} // namespace

class TestHttpTaskManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("no_proxy", "127.0.0.1"); }
    void requestAsSent()
    {
        const std::string binary("{\"k\":\"\0\xe5\"}\r\n", 12);
        const Params form{{"empty", ""}, {"name", "\xe5\xa2\xa8"}, {"text", "a&b=c\r\nd"}};
        const std::tuple<int, std::string, Params, std::string, std::string> rows[] = {
            {HttpGet, "/a", {}, "unused", "/a"},
            {HttpGet, "/a", {{"b", "2"}, {"a", "1"}}, "", "/a?&a=1&b=2"},
            {HttpGet, "/missing?x=0", {{"k", "1%202&c=d"}}, "", "/missing?x=0&k=1%202&c=d"},
            {HttpPost, "/a", {}, "", "/a"},
            {HttpPost, "/a", form, "", "/a"},
            {HttpPost, "/missing?x=1", form, binary, "/missing?x=1"}};
        for (const auto &[method, target, params, body, sentTarget] : rows) {
            const ScriptedServer server;
            Outcomes outcomes;
            HttpTask task = outcomes.task(method, server.host() + target);
            task.params = params;
            task.body = body;
            task.headers = {"X-Tag: one: two", "Accept:"};
            HttpTaskManager manager("test");
            manager.addTask(task);
            manager.stop();

            // An answer is an answer, whatever its status.
            QCOMPARE(outcomes.text(), QByteArray::fromStdString("0 " + target.substr(1) + " r1;"));
            QCOMPARE(server.count(), 1);
            const httplib::Request request = server.requests().front();
            const bool isPost = method == HttpPost;
            QCOMPARE(request.method.c_str(), isPost ? "POST" : "GET");
            QCOMPARE(request.target.c_str(), sentTarget.c_str());
            QCOMPARE(request.get_header_value("X-Tag").c_str(), "one: two");
            QVERIFY(!request.has_header("Accept"));
            const bool isForm = isPost && body.empty() && !params.empty();
            Params fields;
            for (const auto &[name, part] : request.files)
                fields[name] = part.content;
            QVERIFY(fields == (isForm ? params : Params()));
            QCOMPARE(request.body, isPost ? body : std::string());
            QVERIFY(isForm || request.has_header("Content-Length") == isPost);
        }
    }

    void postRepeatsUntilAccepted()
    {
        const ScriptedServer server;
        Outcomes outcomes;
        int calls = 0;
        HttpTask post = outcomes.task(HttpPost, server.host() + "/post");
        post.callback = [&](int code, const std::string &response, const HttpTask &done) {
            return outcomes.add(code, response, done) && ++calls == 3;
        };
        HttpTask get = post;
        get.method = HttpGet;
        HttpTask mute = post;
        mute.callback = nullptr;
        HttpTaskManager manager("test");
        for (const HttpTask &task : {post, mute, get})
            manager.addTask(task);
        manager.stop();
        QCOMPARE(outcomes.text(), QByteArray("0 post r1;0 post r1r2;0 post r1r2r3;0 post r5;"));
    }

    void firstInFirstOut()
    {
        const ScriptedServer server;
        Outcomes outcomes;
        std::optional<HttpTaskManager> manager("test");
        HttpTask first = outcomes.task(HttpPost, server.host() + "/first");
        first.callback = [&](int code, const std::string &response, const HttpTask &done) {
            manager->addTask(outcomes.task(0, server.host() + "/none"));
            return outcomes.add(code, response, done);
        };
        manager->addTask(first);
        QTRY_COMPARE(outcomes.text(), QByteArray("0 first r1;-1 none ;"));
        // The worker waits again by now, and has to be woken.
        manager->addTask(outcomes.task(HttpGet, server.host() + "/get"));
        QTRY_COMPARE(outcomes.text(), QByteArray("0 first r1;-1 none ;0 get r2;"));

        manager->addTask(outcomes.task(HttpGet, server.host() + "/get"));
        manager->addTask(outcomes.task(HttpPost, server.host() + "/post"));
        manager->stop();
        const QByteArray drained("0 first r1;-1 none ;0 get r2;0 get r3;0 post r4;");
        QCOMPARE(outcomes.text(), drained);
        manager->addTask(outcomes.task(HttpGet, server.host() + "/late"));
        manager->stop();
        QCOMPARE(outcomes.text(), drained);
        manager.reset();
        QCOMPARE(outcomes.text(), drained + "-2 late ;");
    }

    void destructorAbortsQueued()
    {
        const ScriptedServer server;
        Outcomes outcomes;
        std::promise<void> release;
        const std::future<void> released = release.get_future();
        std::thread::id abortingThread;
        {
            HttpTaskManager manager("test");
            HttpTask busy = outcomes.task(HttpPost, server.host() + "/busy");
            // Never accepts, so that only the destructor can end its repetitions.
            busy.callback = [&](int, const std::string &, const HttpTask &) {
                released.wait();
                return false;
            };
            manager.addTask(busy);
            QTRY_COMPARE(server.count(), 1);
            HttpTask queued = outcomes.task(HttpPost, server.host() + "/queued");
            queued.callback = [&](int code, const std::string &response, const HttpTask &done) {
                abortingThread = std::this_thread::get_id();
                release.set_value();
                return !outcomes.add(code, response, done);
            };
            manager.addTask(queued);
        }
        QCOMPARE(outcomes.text(), QByteArray("-2 queued ;"));
        QVERIFY(abortingThread == std::this_thread::get_id());
        for (const httplib::Request &request : server.requests())
            QCOMPARE(request.target.c_str(), "/busy");
    }

    // A program that ends waits for no server.
    void stopGivesUp()
    {
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        const std::string url = "http://127.0.0.1:" + std::to_string(silent.serverPort());
        Outcomes outcomes;
        HttpTaskManager manager("test");
        manager.addTask(outcomes.task(HttpGet, url + "/running"));
        manager.addTask(outcomes.task(HttpGet, url + "/queued"));
        QVERIFY(silent.waitForNewConnection(5000));
        manager.stop(std::chrono::milliseconds(50));
        // 42 is libcurl's word for what was interrupted; 28 would be its own limit.
        QCOMPARE(outcomes.text(), QByteArray("42 running ;-2 queued ;"));
    }

    void faultsOfServers()
    {
        // The system accepts connections for a listening socket; nobody ever answers.
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        const std::string url = "http://127.0.0.1:" + std::to_string(silent.serverPort());
        const ScriptedServer breaking("");
        const RawServer closing("");
        const RawServer garbling("\x01\x02 no HTTP at all\r\n\r\n");
        const RawServer flooding("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(2 * 1024 * 1024, 'x'));
        Outcomes posted;
        Outcomes got;
        HttpTaskManager poster("poster");
        HttpTaskManager getter("getter");
        poster.addTask(posted.task(HttpPost, url + "/silent"));
        getter.addTask(got.task(HttpGet, url + "/silent"));
        getter.addTask(got.task(HttpGet, "http://127.0.0.1:1/nobody"));
        getter.addTask(got.task(HttpGet, breaking.host() + "/breaks"));
        getter.addTask(got.task(HttpGet, closing.url() + "/closes"));
        getter.addTask(got.task(HttpGet, garbling.url() + "/garbage"));
        HttpTask flood = got.task(HttpGet, flooding.url() + "/flood");
        flood.callback = [&got](int code, const std::string &, const HttpTask &done) {
            return got.add(code, {}, done);
        };
        getter.addTask(flood);
        QElapsedTimer timer;
        timer.start();
        getter.stop();
        poster.stop();
        QVERIFY2(timer.elapsed() < 20000, "the time limits don't hold");
        QCOMPARE(posted.text(), QByteArray("28 silent ;"));
        QCOMPARE(got.text(), QByteArray("28 silent ;7 nobody ;18 breaks part;"
                                        "52 closes ;1 garbage ;23 flood ;"));
    }
};

QTEST_GUILESS_MAIN(TestHttpTaskManager)
#include "tst_httptaskmanager.moc"
