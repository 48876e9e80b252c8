// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

#include <QSet>
#include <QVector>

/// Runs the tasks of one page, one at a time, and keeps the books of the batch that "start all"
/// began: which of its tasks have yet to leave it. A task leaves by any end, and by a pause.
class TaskBatch : public QObject
{
    Q_OBJECT

public:
    enum GroupState { GroupStarted = 1, GroupEnded = 2 };
    Q_ENUM(GroupState)

    explicit TaskBatch(QObject *parent = nullptr);

    /// Before a task's first start.
    void watch(MediaTask *task);

    bool isRunning() const { return !m_groupName.isEmpty(); }
    /// Begins a batch with tasks that neither wait nor work, in their order. Does nothing for an
    /// empty name, while a batch runs, or without a task that is enabled.
    void startAll(const QString &groupName, const QVector<MediaTask *> &tasks);
    /// A start of its own, outside of any batch; nothing for a task that is at work. One that is
    /// done does its work anew.
    void start(MediaTask *task);
    /// Stops a task, whether it runs or waits.
    void stop(MediaTask *task);
    /// A start of its own of a task that may be at work, which is stopped first, or done.
    void restart(MediaTask *task);
    /// Takes a task that waits out of the queue.
    void pause(MediaTask *task);
    /// Puts such a task back.
    void resume(MediaTask *task);

    /// Whether a page's new choices still reach the task: it neither waits, works nor is done.
    static bool takesChoices(const MediaTask &task);
    static bool canStart(MediaTask::State state);
    /// Whether the task has begun and not ended: there is work to lose.
    static bool isUnderWay(const MediaTask &task);
    static bool isWaiting(const MediaTask &task);

signals:
    void groupStateChanged(const QString &groupName, TaskBatch::GroupState state);

private:
    void leave(MediaTask *task);
    void restartSoon(MediaTask *task);

    MediaTasksManager m_manager;
    bool m_ticks = false;
    /// For comparing only: a pointer may be one of a task that is being destroyed.
    QSet<const MediaTask *> m_pending;
    QSet<const MediaTask *> m_restarting; ///< that are being stopped for it
    QString m_groupName;
};
