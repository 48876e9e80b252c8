// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/macprocessor.h"
#include "MediaKits/MediaTasksManager/filetoolparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/runnertask.h"

using MacTaskParam = FileToolParam<11>;

/// Encodes a WAV file as Monkey's Audio.
class MacTask : public ParamTask<MacTaskParam, RunnerTask<MacProcessor, ToolTask::NoEndProgress>>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    void prepare() override { m_runner.setInOut(m_param->inputFile, m_param->outputFile); }
};
