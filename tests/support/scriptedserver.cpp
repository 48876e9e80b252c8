// SPDX-License-Identifier: MIT
#include "support/scriptedserver.h"

ScriptedServer::ScriptedServer(const Script &script)
{
    const auto answer = [this, script](const httplib::Request &request, httplib::Response &reply) {
        std::string text;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_requests.push_back(request);
            text = "r" + std::to_string(m_requests.size());
        }
        if (script)
            text = script(request);
        reply.status = request.path == "/missing" ? 404 : 200;
        if (text.empty())
            reply.set_content_provider(100, "text/plain",
                                       [](size_t, size_t, httplib::DataSink &sink) {
                                           sink.write("part", 4);
                                           return false;
                                       });
        else
            reply.set_content(text, "application/json");
    };
    m_server.Get(".*", answer);
    m_server.Post(".*", answer);
    m_port = m_server.bind_to_any_port("127.0.0.1");
    m_thread = std::thread([this]() { m_server.listen_after_bind(); });
    // A stop before the loop runs would be lost.
    while (!m_server.is_running())
        std::this_thread::yield();
}

ScriptedServer::ScriptedServer(const std::string &text)
    : ScriptedServer([text](const httplib::Request &) { return text; })
{
}

ScriptedServer::~ScriptedServer()
{
    m_server.stop();
    m_thread.join();
}

std::vector<httplib::Request> ScriptedServer::requests() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_requests;
}
