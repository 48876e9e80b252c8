// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/ffmpegtask.h"

struct FileConcatTaskParam : MediaTaskParam
{
    static constexpr int paramType = 6;
    FileConcatTaskParam(const QString &list, const QString &target)
        : MediaTaskParam(paramType), listFile(list), output(target)
    {
    }

    QString listFile;
    QString output;
};

/// Joins the files of a concat list by copying their streams.
class FileConcatTask : public ParamTask<FileConcatTaskParam, FFmpegTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    void prepare() override;
};
