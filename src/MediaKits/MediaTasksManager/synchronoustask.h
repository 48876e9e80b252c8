// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

#include <functional>
#include <optional>

/// Base of the small tasks, most of which do their work inside `start`; they can't be paused.
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
    /// @return with an empty cause after success; nothing when `endAfter` will be called later
    virtual std::optional<TaskFailure> perform() = 0;
    /// Goes on with the work, and ends the task unless `work` returns nothing.
    void endAfter(const std::function<std::optional<TaskFailure>()> &work);

private:
    void conclude(const TaskFailure &failure);
};
