// SPDX-License-Identifier: MIT
#pragma once

#include <httplib.h>

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A real HTTP server on a free port of 127.0.0.1 that answers as a test says, with the status 404
/// where the path is "/missing".
class ScriptedServer
{
public:
    /// Gives the text of an answer, on a thread of the server; an empty one makes the server
    /// close the connection behind "part", in the middle of its answer.
    using Script = std::function<std::string(const httplib::Request &request)>;

    /// Without a script the n-th request, from 1, is answered with the text "rn".
    explicit ScriptedServer(const Script &script = {});
    /// Answers everything with one text.
    explicit ScriptedServer(const std::string &text);
    ~ScriptedServer();

    ScriptedServer(const ScriptedServer &) = delete;
    ScriptedServer &operator=(const ScriptedServer &) = delete;

    /// "http", address and port, without a "/" behind them.
    std::string host() const { return "http://127.0.0.1:" + std::to_string(m_port); }
    /// What has come in so far, in order.
    std::vector<httplib::Request> requests() const;
    int count() const { return int(requests().size()); }

private:
    httplib::Server m_server;
    int m_port = 0;
    mutable std::mutex m_mutex;
    std::vector<httplib::Request> m_requests;
    std::thread m_thread;
};
