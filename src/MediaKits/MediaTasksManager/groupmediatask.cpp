// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/groupmediatask.h"

#include <algorithm>

GroupMediaTask::GroupMediaTask(const QVector<TaskItem> &items, bool cleanupLast,
                               const QString &name, const QString &groupId, QObject *parent)
    : MediaTask(name, groupId, parent), m_items(items), m_cleanupLast(cleanupLast)
{
    for (int i = 0; i < m_items.size(); ++i) {
        m_weightBefore.append(m_totalWeight);
        m_totalWeight += m_items[i].weight;
        if (m_items[i].task)
            adopt(i);
    }
}

void GroupMediaTask::adopt(int index)
{
    MediaTask *task = m_items[index].task;
    task->setParent(this);
    // Queued, so that a task's own slot has returned before the next task starts from here.
    connect(
        task, &MediaTask::taskStateChanged, this,
        [this, index](MediaTask::State state) { onItemState(index, state); }, Qt::QueuedConnection);
    connect(
        task, &MediaTask::taskProgress, this,
        [this, index](double progress) { onItemProgress(index, progress); }, Qt::QueuedConnection);
    connect(task, &MediaTask::taskCustomeMsgCome, this, &MediaTask::taskCustomeMsgCome);
}

void GroupMediaTask::startItem(int index)
{
    if (!m_items[index].task) {
        m_items[index].task = m_items[index].make();
        adopt(index);
    }
    m_items[index].task->start();
}

GroupMediaTask::~GroupMediaTask()
{
    GroupMediaTask::stop();
}

MediaTask *GroupMediaTask::currentTask() const
{
    return m_currentIndex < m_items.size() ? m_items[m_currentIndex].task : nullptr;
}

void GroupMediaTask::start()
{
    if (isFinal(state()))
        m_stopRequested = false;
    m_shownProgress = 0.0;
    if (!enter(START))
        return;
    MediaTask *task = currentTask();
    if (!task)
        setState(FINISHED);
    else if (!m_stopRequested)
        task->start();
}

void GroupMediaTask::pause()
{
    if (MediaTask *task = currentTask())
        task->pause();
}

void GroupMediaTask::resume()
{
    if (MediaTask *task = currentTask())
        task->resume();
}

void GroupMediaTask::stop()
{
    if (state() == STOPED)
        return;
    m_stopRequested = true;
    if (!enter(STOPING))
        return;
    MediaTask *task = currentTask();
    m_currentIndex = 0;
    if (task)
        task->stop();
}

void GroupMediaTask::onItemProgress(int index, double progress)
{
    const double share = std::clamp(progress, 0.0, 1.0) * m_items[index].weight;
    showProgress((share + m_weightBefore[index]) / m_totalWeight);
}

// A tool may report a position behind an earlier one; for a user the work goes on.
void GroupMediaTask::showProgress(double progress)
{
    if (progress < m_shownProgress)
        return;
    m_shownProgress = progress;
    emit taskProgress(progress);
}

void GroupMediaTask::onItemState(int index, State itemState)
{
    switch (itemState) {
    case START:
        m_currentIndex = index;
        if (m_stopRequested)
            m_items[index].task->stop();
        break;
    case RUNNING:
        if (index == 0)
            setState(RUNNING);
        break;
    case PAUSED:
    case RESUMED:
        // Told before a stop, it may arrive behind it.
        if (!m_stopRequested)
            setState(itemState);
        break;
    case STOPING:
        setState(itemState);
        break;
    case FINISHED:
        onItemFinished(index);
        break;
    case ERROR:
    case STOPED:
        onItemEnded(index, itemState);
        break;
    case UNSTARTED:
    case DESTORIED:
        break;
    }
}

void GroupMediaTask::onItemFinished(int index)
{
    addRemarks(m_items[index].task->remarks());
    if (index == m_items.size() - 1) {
        const QPointer<GroupMediaTask> alive(this);
        showProgress(1.0);
        if (alive)
            setState(FINISHED);
    } else if (m_stopRequested) {
        // The stop came while no item could take it, or the item's tool had just been started:
        // its result may be half a file, and nothing behind it may run.
        onItemEnded(index, STOPED);
    } else {
        if (m_items[index].make) {
            m_items[index].task->deleteLater();
            m_items[index].task = nullptr;
            m_currentIndex = index + 1;
        }
        startItem(index + 1);
    }
}

void GroupMediaTask::onItemEnded(int index, State outcome)
{
    if (outcome == ERROR)
        keepFailure(m_items[index].task->failure());
    if (m_cleanupLast)
        runClosingStep(outcome);
    else
        setState(outcome);
}

void GroupMediaTask::runClosingStep(State outcome)
{
    MediaTask *closing = m_items.last().task;
    disconnect(closing, &MediaTask::taskStateChanged, this, nullptr);
    connect(
        closing, &MediaTask::taskStateChanged, this,
        [this, outcome](State closingState) {
            if (closingState == FINISHED)
                setState(outcome);
            else if (closingState == ERROR || closingState == STOPED)
                setState(closingState);
        },
        Qt::DirectConnection);
    closing->start();
}
