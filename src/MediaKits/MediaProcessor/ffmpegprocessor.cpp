// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegprocessor.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaProcessor/toolpaths.h"

namespace {

constexpr quint32 defaultDurationMs = 90 * 60 * 1000;

} // namespace

void FFMpegProcessor::setCommand(const QString &arguments, quint32 durationMs, bool withProgress)
{
    m_arguments = arguments;
    m_durationMs = durationMs == 0 ? defaultDurationMs : durationMs;
    m_withProgress = withProgress;
    resetAccount();
}

void FFMpegProcessor::start()
{
    QStringList arguments = QProcess::splitCommand(m_arguments);
    if (m_withProgress)
        arguments += {QStringLiteral("-progress"), QStringLiteral("pipe:1")};
    launch(ffmpegPath(), arguments);
}

void FFMpegProcessor::childRunning()
{
    CLOG(DEBUG, "default") << "FFmpeg cmd:" << m_arguments;
    ProgressProcessor::childRunning();
}

double FFMpegProcessor::progressAt(qint64 positionUs, quint32 durationMs) const
{
    const qint64 positionMs = positionUs / 1000;
    const double progress = double(positionMs) / double(durationMs);
    return progress > 1.0 ? overrunProgress : progress;
}
