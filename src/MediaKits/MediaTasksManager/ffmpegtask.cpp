// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/ffmpegtask.h"

void FFmpegTask::prepare()
{
    m_runner.setCommand(m_param->command, quint32(m_param->durationMs), true);
}

void FFmpegTask::tellSource(const QSharedPointer<MediaInfoData> &source, SourceCover cover)
{
    m_runner.setVariable(sourceVariable, source ? sourceFacts(*source, cover) : QString());
}
