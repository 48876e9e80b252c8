// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/toolprocessor.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

/// Base of the tasks that run one tool: the states of its runner become the states of the task.
class ToolTask : public MediaTask
{
    Q_OBJECT

public:
    void pause() override;
    void stop() override;
    void resume() override;

    /// Process id of the running tool, 0 when there is none.
    qint64 processId() const { return m_runner.processId(); }

    /// The last lines that the tool wrote.
    QStringList report() const;

    /// Whether a full bar is signalled ahead of `FINISHED`.
    enum EndProgress { NoEndProgress, FullEndProgress };

protected:
    /// @param runner the subclass's own processor; it is not used before `start`
    ToolTask(ToolProcessor &runner, EndProgress endProgress, const QString &name,
             const QString &groupId, QObject *parent);

    /// Connects the runner; for the subclass's constructor, when the runner has been made.
    void watchRunner();

    /// Starts the tool.
    void run();
    /// Tells the runner what to do; called ahead of each start.
    virtual void prepare() = 0;
    /// Whether the tool, which has ended, is to be started once more; it is prepared anew.
    /// @param endedWell whether the run would have finished the task
    virtual bool goesOn(bool endedWell);

private:
    void onRunnerState(MediaProcessor::State runnerState);
    bool startsAnew(bool endedWell);
    void onRunnerFinished();
    void onRunnerError();

    ToolProcessor &m_runner;
    EndProgress m_endProgress;
    bool m_isStopped = false;
};
