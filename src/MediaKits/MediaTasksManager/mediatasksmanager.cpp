// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

#include <algorithm>

namespace {

// Such a task was resumed on its own while it waited here; it only takes its place.
bool isUnderWay(MediaTask::State state)
{
    return state == MediaTask::START || state == MediaTask::RUNNING ||
           state == MediaTask::RESUMED || state == MediaTask::STOPING;
}

} // namespace

MediaTasksManager::MediaTasksManager(int interval, int maxRunning, QObject *parent)
    : QObject(parent), m_interval(interval), m_maxRunning(maxRunning)
{
    connect(&m_timer, &QTimer::timeout, this, &MediaTasksManager::dispatch);
}

void MediaTasksManager::startTimer()
{
    m_timer.start(m_interval);
}

void MediaTasksManager::stopTimer()
{
    m_timer.stop();
}

bool MediaTasksManager::addTask(MediaTask *task)
{
    if (!task || !task->isEnabled() || task->manager() || m_queue.contains(task))
        return false;
    task->m_manager = this;
    m_queue.append(task);
    task->setOperate(MediaTask::OperateQueued);
    return true;
}

bool MediaTasksManager::removeTask(MediaTask *task)
{
    if (!m_queue.removeOne(task))
        return true;
    task->m_manager.clear();
    task->setOperate(MediaTask::OperateDequeued);
    return false;
}

void MediaTasksManager::dispatch()
{
    const auto next = std::find_if(m_queue.begin(), m_queue.end(),
                                   [](const MediaTask *task) { return !task->isHeld(); });
    if (next == m_queue.end() || m_running >= m_maxRunning)
        return;
    MediaTask *task = *next;
    m_queue.erase(next);
    ++m_running;
    disconnect(task, &MediaTask::taskStateChanged, this, nullptr);
    connect(
        task, &MediaTask::taskStateChanged, this,
        [this, task](MediaTask::State state) { release(task, state); }, Qt::DirectConnection);

    const QPointer<MediaTask> alive(task);
    if (task->state() == MediaTask::PAUSED)
        task->resume();
    else if (!isUnderWay(task->state()))
        task->start();
    if (!alive)
        return;
    // A task that could not even begin may have had no change of state to tell.
    if (task->manager() == this && MediaTask::isFinal(task->state()))
        release(task, task->state());
    if (!m_queue.contains(task))
        task->setOperate(MediaTask::OperateDispatched);
}

void MediaTasksManager::release(MediaTask *task, MediaTask::State state)
{
    if (!MediaTask::isFinal(state) && state != MediaTask::PAUSED && state != MediaTask::DESTORIED)
        return;
    disconnect(task, &MediaTask::taskStateChanged, this, nullptr);
    task->m_manager.clear();
    if (m_running > 0)
        --m_running;
}
