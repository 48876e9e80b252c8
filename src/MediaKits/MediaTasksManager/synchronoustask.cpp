// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/synchronoustask.h"

void SynchronousTask::run()
{
    if (!enter(START) || !enter(RUNNING))
        return;
    const QPointer<SynchronousTask> alive(this);
    const QString problem = perform();
    if (!alive)
        return;
    if (problem.isEmpty())
        setState(FINISHED);
    else
        fail(problem);
}

void SynchronousTask::stop()
{
    if (state() == STOPED)
        return;
    if (enter(STOPING))
        setState(STOPED);
}
