// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct TempDirDeleteTaskParam : MediaTaskParam
{
    static constexpr int paramType = 13;
    explicit TempDirDeleteTaskParam(const QString &path = {}) : MediaTaskParam(paramType), dir(path)
    {
    }

    QString dir;
};

/// Removes a work folder with all that lies in it. What can't be removed is left to the sweep of
/// the marker directory around it.
class TempDirDeleteTask : public ParamTask<TempDirDeleteTaskParam, SynchronousTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    std::optional<TaskFailure> perform() override;
};
