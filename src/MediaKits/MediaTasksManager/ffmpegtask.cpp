// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/ffmpegtask.h"

void FFmpegTask::prepare()
{
    m_runner.setCommand(m_param->command, quint32(m_param->durationMs), true);
}
