// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/synchronoustask.h"

void SynchronousTask::run()
{
    if (!enter(START) || !enter(RUNNING))
        return;
    const QPointer<SynchronousTask> alive(this);
    const std::optional<TaskFailure> failure = perform();
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
