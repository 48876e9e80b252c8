// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

#include <QTimer>

/// A queue that starts tasks, first in first out, one a tick of its timer, under a limit of
/// running tasks. It owns none of them. A paused task gives its place back; added again, it is
/// resumed when its turn comes.
class MediaTasksManager : public QObject
{
    Q_OBJECT

public:
    /// As each page has one: two ticks a second, one task at a time.
    MediaTasksManager() : MediaTasksManager(500, 1) {}
    /// @param interval ms between two ticks
    /// @param maxRunning tasks that may run at the same time
    MediaTasksManager(int interval, int maxRunning, QObject *parent = nullptr);

    void startTimer();
    void stopTimer();

    /// @return false for a null task, one that isn't enabled, or one that a manager already holds
    bool addTask(MediaTask *task);
    /// Takes a task out of the queue; a task that already runs goes on.
    /// @return true when the task wasn't in the queue
    bool removeTask(MediaTask *task);

private:
    void dispatch();
    void release(MediaTask *task, MediaTask::State state);

    int m_interval;
    QList<MediaTask *> m_queue;
    QTimer m_timer;
    int m_maxRunning;
    int m_running = 0;
};
