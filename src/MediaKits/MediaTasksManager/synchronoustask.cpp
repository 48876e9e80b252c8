// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/synchronoustask.h"

void SynchronousTask::run()
{
    if (!enter(START) || !enter(RUNNING))
        return;
    endAfter([this] { return perform(); });
}

// A listener to what the work tells may delete the task.
void SynchronousTask::endAfter(const std::function<std::optional<TaskFailure>()> &work)
{
    const QPointer<SynchronousTask> alive(this);
    const std::optional<TaskFailure> failure = work();
    if (alive && failure)
        conclude(*failure);
}

void SynchronousTask::conclude(const TaskFailure &failure)
{
    if (failure.cause.isEmpty())
        setState(FINISHED);
    else
        fail(failure);
}

void SynchronousTask::stop()
{
    if (state() == STOPED)
        return;
    if (enter(STOPING))
        setState(STOPED);
}
