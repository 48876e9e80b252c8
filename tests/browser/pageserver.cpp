// SPDX-License-Identifier: MIT
#include "browser/pageserver.h"

#include "support/toolrun.h"

#include <QTemporaryDir>

namespace {

std::unique_ptr<httplib::Server> secretServer()
{
    const QTemporaryDir dir;
    const QString key = dir.filePath("key.pem"_s);
    const QString certificate = dir.filePath("certificate.pem"_s);
    runTool("openssl"_s,
            {"req"_s, "-x509"_s, "-newkey"_s, "rsa:2048"_s, "-nodes"_s, "-days"_s, "2"_s, "-subj"_s,
             "/CN=127.0.0.1"_s, "-addext"_s, "subjectAltName=IP:127.0.0.1"_s, "-keyout"_s, key,
             "-out"_s, certificate});
    return std::make_unique<httplib::SSLServer>(certificate.toUtf8().constData(),
                                                key.toUtf8().constData());
}

} // namespace

PageServer::PageServer(const QMap<QString, ServedPage> &pages, bool isSecret)
    : m_isSecret(isSecret),
      m_server(isSecret ? secretServer() : std::make_unique<httplib::Server>()),
      m_pages(pages)
{
    m_server->Get(".*", [this](const httplib::Request &request, httplib::Response &reply) {
        answer(request, reply);
    });
    m_server->Post(".*", [this](const httplib::Request &request, httplib::Response &reply) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_posted += QByteArray::fromStdString(request.body) + '\n';
        reply.set_content(R"({"code":"200","message":"success","ssid":"s"})", "application/json");
    });
    // A stop would wait for the ends of what is kept.
    m_server->set_keep_alive_max_count(1);
    m_port = m_server->bind_to_any_port("127.0.0.1");
    m_thread = std::thread([this] { m_server->listen_after_bind(); });
    // A stop before the loop runs would be lost.
    while (!m_server->is_running())
        std::this_thread::yield();
}

PageServer::~PageServer()
{
    m_isEnding = true;
    m_server->stop();
    m_thread.join();
}

QString PageServer::address(const QString &path) const
{
    return "%1://127.0.0.1:%2%3"_s.arg(m_isSecret ? "https"_s : "http"_s).arg(m_port).arg(path);
}

QStringList PageServer::asked() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_asked;
}

void PageServer::setPage(const QString &path, const ServedPage &page)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pages[path] = page;
}

QByteArray PageServer::posted() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_posted;
}

ServedPage PageServer::pageAt(const QString &path) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pages.value(path, {"nothing", "text/plain", {}, 404});
}

void PageServer::answer(const httplib::Request &request, httplib::Response &reply)
{
    const QString path = QString::fromStdString(request.path);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_asked += path;
    }
    while (pageAt(path).isWithheld && !m_isEnding)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const ServedPage page = pageAt(path);
    reply.status = page.status;
    if (!page.header.isEmpty()) {
        const int colon = page.header.indexOf(": ");
        reply.set_header(page.header.left(colon).toStdString(),
                         page.header.mid(colon + 2).toStdString());
    }
    reply.set_content(page.content.toStdString(), page.type);
}
