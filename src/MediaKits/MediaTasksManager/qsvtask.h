// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/qsvprocessor.h"
#include "MediaKits/MediaTasksManager/filetoolparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/runnertask.h"

struct QsvTaskParam : FileToolParam<10>
{
    QsvTaskParam(const QString &input, const QString &output, int mode)
        : FileToolParam(input, output), qsvMode(mode)
    {
    }

    int qsvMode = 0;
};

/// Rewraps a QSV file.
class QsvTask : public ParamTask<QsvTaskParam, RunnerTask<QsvProcessor, ToolTask::NoEndProgress>>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    void prepare() override
    {
        m_runner.setInOut(m_param->inputFile, m_param->outputFile, m_param->qsvMode);
    }
};
