// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct MediaMoveTaskParam : MediaTaskParam
{
    static constexpr int paramType = 12;
    MediaMoveTaskParam(const QString &source, const QString &target)
        : MediaTaskParam(paramType), from(source), to(target)
    {
    }

    QString from;
    QString to; ///< wanted path; the file gets a free name beside it when it is taken
};

/// Renames a finished file into place under a free name and tells the name by a custom message
/// of type `OutputMoved`. It never replaces a file.
class MediaMoveTask : public ParamTask<MediaMoveTaskParam, SynchronousTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    QString perform() override;
};
