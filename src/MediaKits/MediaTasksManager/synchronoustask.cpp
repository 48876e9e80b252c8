// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/synchronoustask.h"

void SynchronousTask::start()
{
    if (!param()) {
        failWithoutParam();
        return;
    }
    setState(START);
    setState(RUNNING);
    const QString problem = perform();
    if (problem.isEmpty())
        setState(FINISHED);
    else
        fail(problem);
}

void SynchronousTask::stop()
{
    if (state() == STOPED)
        return;
    setState(STOPING);
    setState(STOPED);
}
