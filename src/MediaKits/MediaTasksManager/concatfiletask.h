// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct ConcatFileTaskParam : MediaTaskParam
{
    static constexpr int paramType = 7;
    ConcatFileTaskParam(const QStringList &parts, const QString &list)
        : MediaTaskParam(paramType), files(parts), listFile(list)
    {
    }

    QStringList files; ///< the parts, in the folder of the list
    QString listFile;
};

/// Writes the list that ffmpeg's concat demuxer reads.
class ConcatFileTask : public ParamTask<ConcatFileTaskParam, SynchronousTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    std::optional<TaskFailure> perform() override { return TaskFailure{createConcatFile(), {}}; }

private:
    QString createConcatFile() const;
};
