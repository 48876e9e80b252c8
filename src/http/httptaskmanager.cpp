// SPDX-License-Identifier: MIT
#include "http/httptaskmanager.h"

#include "http/httpconnection.h"

#include <iostream>
#include <system_error>
#include <utility>

namespace {

bool report(const HttpTask &task, int code, const std::string &response = {})
{
    return task.callback && task.callback(code, response, task);
}

} // namespace

HttpTaskManager::HttpTaskManager(const std::string &name) : m_name(name)
{
    try {
        for (int i = 0; i < m_threadCount; ++i) {
            m_threads.emplace_back([this] {
                runWorker();
                const std::lock_guard<std::mutex> lock(m_mutex);
                --m_running;
                m_condition.notify_all();
            });
            const std::lock_guard<std::mutex> lock(m_mutex);
            ++m_running;
        }
    } catch (const std::system_error &error) {
        // Its tasks are then reported at the end of the manager, as those behind stop().
        std::clog << m_name << ": no worker thread: " << error.what() << '\n';
    }
}

HttpTaskManager::~HttpTaskManager()
{
    abortQueued();
    m_aborting = true;
    wake();
    join();
}

void HttpTaskManager::addTask(const HttpTask &task)
{
    HttpTask copy = task;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_queue.push_back(std::move(copy));
    }
    m_condition.notify_one();
}

void HttpTaskManager::stop()
{
    m_draining = true;
    wake();
    join();
}

void HttpTaskManager::stop(std::chrono::milliseconds limit)
{
    m_draining = true;
    wake();
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait_for(lock, limit, [this] { return m_running <= 0; });
    }
    m_aborting = true;
    m_cancelled = true;
    join();
}

void HttpTaskManager::wake()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_woken = true;
    m_condition.notify_all();
}

void HttpTaskManager::join()
{
    for (std::thread &thread : m_threads) {
        if (thread.joinable()) {
            thread.join();
        }
    }
}

void HttpTaskManager::runWorker()
{
    HttpConnectionConfig config;
    config.cancel = &m_cancelled;
    const HttpConnection connection(config);
    while (!m_aborting) {
        if (m_draining && isQueueEmpty()) {
            return;
        }
        if (const std::shared_ptr<const HttpTask> task = waitForTask()) {
            perform(connection, *task);
        }
    }
    abortQueued();
}

void HttpTaskManager::perform(const HttpConnection &connection, const HttpTask &task) const
{
    std::string response;
    if (task.method == HttpGet) {
        const int code = connection.performGet(task.url, task.headers, task.params, response);
        report(task, code, response);
    } else if (task.method == HttpPost) {
        int code = 0;
        do {
            code = connection.performPost(task.url, task.headers, task.params, task.body, response);
        } while (task.callback && !m_aborting && !report(task, code, response));
    } else {
        report(task, NoRequest);
    }
}

std::shared_ptr<const HttpTask> HttpTaskManager::waitForTask()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_condition.wait(lock, [this] { return m_woken || !m_queue.empty(); });
    return popFront();
}

std::shared_ptr<const HttpTask> HttpTaskManager::takeTask()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return popFront();
}

std::shared_ptr<const HttpTask> HttpTaskManager::popFront()
{
    if (m_queue.empty()) {
        return nullptr;
    }
    auto task = std::make_shared<const HttpTask>(std::move(m_queue.front()));
    m_queue.pop_front();
    return task;
}

bool HttpTaskManager::isQueueEmpty()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_queue.empty();
}

void HttpTaskManager::abortQueued()
{
    while (const std::shared_ptr<const HttpTask> task = takeTask()) {
        report(*task, Aborted);
    }
}
