// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/tooltask.h"

#include "MediaKits/MediaTasksManager/failurecause.h"

namespace {

constexpr int keptReportLines = 12;

} // namespace

ToolTask::ToolTask(ToolProcessor &runner, EndProgress endProgress, const QString &name,
                   const QString &groupId, QObject *parent)
    : MediaTask(name, groupId, parent), m_runner(runner), m_endProgress(endProgress)
{
}

void ToolTask::watchRunner()
{
    connect(&m_runner, &MediaProcessor::stateChanged, this, &ToolTask::onRunnerState,
            Qt::DirectConnection);
    connect(&m_runner, &MediaProcessor::progressChanged, this, &MediaTask::taskProgress);
}

QStringList ToolTask::report() const
{
    return m_runner.lastLines(keptReportLines);
}

void ToolTask::run()
{
    m_isStopped = false;
    if (!enter(START))
        return;
    prepare();
    m_runner.start();
}

void ToolTask::pause()
{
    m_runner.pause();
}

void ToolTask::resume()
{
    m_runner.resume();
}

void ToolTask::stop()
{
    if (state() == STOPED)
        return;
    m_isStopped = true;
    if (enter(STOPING))
        m_runner.stop(true);
}

void ToolTask::onRunnerState(MediaProcessor::State runnerState)
{
    switch (runnerState) {
    case MediaProcessor::ProcessorRunning:
        setState(RUNNING);
        break;
    case MediaProcessor::ProcessorPaused:
        setState(PAUSED);
        break;
    case MediaProcessor::ProcessorResumed:
        setState(RESUMED);
        break;
    case MediaProcessor::ProcessorFinished:
        onRunnerFinished();
        break;
    case MediaProcessor::ProcessorError:
        onRunnerError();
        break;
    case MediaProcessor::ProcessorIdle:
    case MediaProcessor::ProcessorStarted:
        break;
    }
}

bool ToolTask::goesOn(bool)
{
    return false;
}

// A runner that was told to stop says that it has finished.
bool ToolTask::startsAnew(bool endedWell)
{
    if (m_isStopped || !goesOn(endedWell))
        return false;
    prepare();
    m_runner.start();
    return true;
}

void ToolTask::onRunnerError()
{
    if (startsAnew(false))
        return;
    const QStringList lines = report();
    fail({failureCause(lines), lines});
}

void ToolTask::onRunnerFinished()
{
    if (startsAnew(true))
        return;
    const QPointer<ToolTask> alive(this);
    if (m_endProgress == FullEndProgress)
        emit taskProgress(1.0);
    if (alive)
        setState(FINISHED);
}
