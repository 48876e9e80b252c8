// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct TempDirCreateParam : MediaTaskParam
{
    static constexpr int paramType = 14;
    explicit TempDirCreateParam(const QString &dir = {}) : MediaTaskParam(paramType), path(dir) {}

    QString path;
};

/// Makes a work folder and claims it for this process.
class TempDirCreateTask : public ParamTask<TempDirCreateParam, SynchronousTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    std::optional<TaskFailure> perform() override;
};
