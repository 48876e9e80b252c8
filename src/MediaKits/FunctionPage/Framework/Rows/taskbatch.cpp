// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"

#include <QPointer>

#include <utility>

namespace {

bool isIdle(MediaTask::State state)
{
    return state == MediaTask::UNSTARTED || state == MediaTask::STOPED || state == MediaTask::ERROR;
}

} // namespace

TaskBatch::TaskBatch(QObject *parent) : QObject(parent) {}

bool TaskBatch::takesChoices(const MediaTask &task)
{
    return isIdle(task.state()) && !isWaiting(task);
}

bool TaskBatch::canStart(MediaTask::State state)
{
    return isIdle(state) || state == MediaTask::PAUSED;
}

bool TaskBatch::isUnderWay(const MediaTask &task)
{
    const MediaTask::State state = task.state();
    return state == MediaTask::START || state == MediaTask::RUNNING || state == MediaTask::PAUSED ||
           state == MediaTask::RESUMED;
}

bool TaskBatch::isWaiting(const MediaTask &task)
{
    return task.operate() == MediaTask::OperateQueued;
}

void TaskBatch::watch(MediaTask *task)
{
    // An idle page has no timer that wakes the processor. Each start begins a new interval: more
    // of them would hold the queue up while files are added.
    if (!std::exchange(m_ticks, true))
        m_manager.startTimer();
    connect(task, &MediaTask::taskStateChanged, this, [this, task](MediaTask::State state) {
        if (MediaTask::isFinal(state) || state == MediaTask::PAUSED ||
            state == MediaTask::DESTORIED)
            leave(task);
        if (MediaTask::isFinal(state) && m_restarting.contains(task))
            restartSoon(task);
        else if (state == MediaTask::DESTORIED)
            m_restarting.remove(task);
    });
    connect(task, &MediaTask::taskOperateChanged, this, [this, task](MediaTask::Operate operate) {
        if (operate == MediaTask::OperateDequeued)
            leave(task);
    });
}

void TaskBatch::startAll(const QString &groupName, const QVector<MediaTask *> &tasks)
{
    if (groupName.isEmpty() || isRunning())
        return;
    QVector<MediaTask *> enabled;
    for (MediaTask *task : tasks) {
        if (task->isEnabled())
            enabled += task;
    }
    m_pending.clear();
    if (enabled.isEmpty())
        return;
    m_groupName = groupName;
    emit groupStateChanged(groupName, GroupStarted);
    for (MediaTask *task : qAsConst(enabled)) {
        m_manager.addTask(task);
        task->setGroupId(groupName);
        m_pending.insert(task);
    }
}

void TaskBatch::start(MediaTask *task)
{
    task->setGroupId(QString());
    if (canStart(task->state()) || task->state() == MediaTask::FINISHED)
        m_manager.addTask(task);
}

void TaskBatch::stop(MediaTask *task)
{
    task->stop();
    m_manager.removeTask(task);
}

void TaskBatch::restart(MediaTask *task)
{
    if (isUnderWay(*task) || task->state() == MediaTask::STOPING) {
        m_restarting.insert(task);
        task->stop();
        return;
    }
    task->setGroupId(QString());
    m_manager.addTask(task);
}

// The manager has yet to hear of the end.
void TaskBatch::restartSoon(MediaTask *task)
{
    m_restarting.remove(task);
    const QPointer<MediaTask> alive(task);
    QMetaObject::invokeMethod(
        this,
        [this, alive] {
            if (alive)
                restart(alive);
        },
        Qt::QueuedConnection);
}

void TaskBatch::pause(MediaTask *task)
{
    if (isWaiting(*task))
        m_manager.removeTask(task);
    else
        task->pause();
}

void TaskBatch::resume(MediaTask *task)
{
    if (task->state() == MediaTask::PAUSED)
        task->resume();
    else
        start(task);
}

void TaskBatch::leave(MediaTask *task)
{
    if (m_groupName.isEmpty() || task->groupId() != m_groupName)
        return;
    m_pending.remove(task);
    if (!m_pending.isEmpty())
        return;
    emit groupStateChanged(m_groupName, GroupEnded);
    m_groupName.clear();
}
