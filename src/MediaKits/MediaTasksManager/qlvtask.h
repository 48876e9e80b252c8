// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/qlvprocessor.h"
#include "MediaKits/MediaTasksManager/filetoolparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/runnertask.h"

using QlvTaskParam = FileToolParam<9>;

/// Rewraps a QLV file.
class QlvTask : public ParamTask<QlvTaskParam, RunnerTask<QlvProcessor, ToolTask::NoEndProgress>>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    void prepare() override { m_runner.setInOut(m_param->inputFile, m_param->outputFile); }
};
