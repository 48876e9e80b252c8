// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

#include <optional>

/// Base of the small tasks that do their work inside `start`; they can't be paused.
class SynchronousTask : public MediaTask
{
    Q_OBJECT

public:
    using MediaTask::MediaTask;

    void pause() final {}
    void resume() final {}
    void stop() override;

protected:
    void run();
    /// Does the work.
    /// @return with an empty cause after success; nothing when `conclude` will be called later
    virtual std::optional<TaskFailure> perform() = 0;
    /// Ends the task.
    void conclude(const TaskFailure &failure);
};
