// SPDX-License-Identifier: MIT
#pragma once

#include "http/httptask.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class HttpConnection;

/// Performs HTTP tasks on a worker thread of its own, first in, first out. Nothing is thrown to a
/// caller: all results arrive through the tasks' callbacks.
class HttpTaskManager
{
public:
    /// Code for a task whose method is neither GET nor POST.
    static constexpr int NoRequest = -1;
    /// Code for a task that was still queued when the manager was destroyed.
    static constexpr int Aborted = -2;

    /// Starts the worker. `name` tells managers apart.
    explicit HttpTaskManager(const std::string &name);

    /// Ends every task that is still queued with the code Aborted, on the calling thread, and waits
    /// for the running request (at most 5 seconds); the callback of a running POST is left out.
    /// Must not run on the worker, that is, in a callback.
    ~HttpTaskManager();

    HttpTaskManager(const HttpTaskManager &) = delete;
    HttpTaskManager &operator=(const HttpTaskManager &) = delete;

    const std::string &name() const { return m_name; }

    /// Queues a copy of `task`. Safe on every thread and in a callback. After stop() no worker
    /// takes the task any more, and the destructor reports it.
    void addTask(const HttpTask &task);

    /// Waits until the queue is performed and the worker has ended; each attempt takes at most
    /// 5 seconds. A POST whose callback goes on returning false keeps it waiting. May be called
    /// again; one thread at a time, and never in a callback.
    void stop();

    /// The same for at most `limit` and a moment: then the running request is given up and what is
    /// still queued is reported as Aborted.
    void stop(std::chrono::milliseconds limit);

private:
    void runWorker();
    void perform(const HttpConnection &connection, const HttpTask &task) const;
    std::shared_ptr<const HttpTask> waitForTask();
    std::shared_ptr<const HttpTask> takeTask();
    std::shared_ptr<const HttpTask> popFront();
    bool isQueueEmpty();
    void abortQueued();
    void wake();
    void join();

    const std::string m_name;
    std::atomic<bool> m_aborting{false};
    std::atomic<bool> m_draining{false};
    std::atomic<bool> m_cancelled{false};
    const int m_threadCount = 1;
    std::vector<std::thread> m_threads;
    std::deque<HttpTask> m_queue;
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_woken = false;
    int m_running = 0; // workers
};
