// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

/// Base of the small tasks that do their whole work inside `start`; they can't be paused.
class SynchronousTask : public MediaTask
{
    Q_OBJECT

public:
    using MediaTask::MediaTask;

    void pause() final {}
    void resume() final {}
    void stop() final;

protected:
    void run();
    /// Does the work.
    /// @return the cause of a failure, empty after success
    virtual QString perform() = 0;
};
