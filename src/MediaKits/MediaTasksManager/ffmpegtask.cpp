// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/ffmpegtask.h"

FFmpegTask::FFmpegTask(const QString &name, const QString &groupId, QObject *parent)
    : ToolTask(m_processor, FullEndProgress, name, groupId, parent)
{
    watchRunner();
}

void FFmpegTask::start()
{
    if (!m_param) {
        failWithoutParam();
        return;
    }
    setState(START);
    m_processor.setCommand(m_param->command, quint32(m_param->durationMs), true);
    m_processor.start();
}
