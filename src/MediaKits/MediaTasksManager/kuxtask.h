// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/kuxprocessor.h"
#include "MediaKits/MediaTasksManager/filetoolparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/runnertask.h"

using KuxParam = FileToolParam<8>;

/// Turns a KUX file into one that the main ffmpeg reads.
class KuxTask : public ParamTask<KuxParam, RunnerTask<KuxProcessor, ToolTask::FullEndProgress>>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    void prepare() override;
};
