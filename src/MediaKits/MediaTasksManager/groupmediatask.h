// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

#include <functional>

/// One member of a chain and its share of the chain's progress.
struct TaskItem
{
    MediaTask *task;
    double weight;
    /// Makes the task when its turn comes, where that is null: a chain may have thousands. It goes
    /// when it has finished.
    std::function<MediaTask *()> make = {};
};

/// A chain of tasks that run one after the other and act as one task.
class GroupMediaTask : public MediaTask
{
    Q_OBJECT

public:
    /// @param items in the order of their run; the group becomes the owner of the tasks
    /// @param cleanupLast the last item must run however the chain ends
    GroupMediaTask(const QVector<TaskItem> &items, bool cleanupLast, const QString &name = {},
                   const QString &groupId = {}, QObject *parent = nullptr);
    ~GroupMediaTask() override;

    void start() override;
    void pause() override;
    void stop() override;
    void resume() override;

private:
    void adopt(int index);
    void startItem(int index);
    void onItemState(int index, State state);
    void onItemProgress(int index, double progress);
    void showProgress(double progress);
    void onItemFinished(int index);
    void onItemEnded(int index, State outcome);
    void runClosingStep(State outcome);
    MediaTask *currentTask() const;

    QVector<TaskItem> m_items;
    bool m_cleanupLast;
    int m_currentIndex = 0;
    double m_totalWeight = 0.0;
    QVector<double> m_weightBefore;
    bool m_stopRequested = false;
    double m_shownProgress = 0.0;
};
