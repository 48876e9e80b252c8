// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegprocessor.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QRegularExpression>

namespace {

constexpr quint32 defaultDurationMs = 90 * 60 * 1000;
// Progress that overruns the expected length waits here for the end of the tool.
constexpr double overrunProgress = 0.999;

// ffmpeg ends with exit code 0 when only the last bytes of its output could not be written; lines
// of its report that begin so then tell that the file is cut off. A file's or a tag's name may hold
// the same words, but not at the start of a line.
bool reportsLostOutput(const QString &report)
{
    static const QRegularExpression lost(
        QStringLiteral("^(av_interleaved_write_frame\\(\\): |Error writing trailer of |"
                       "Error closing file )"),
        QRegularExpression::MultilineOption);
    return lost.match(QString(report).replace(QLatin1Char('\r'), QLatin1Char('\n'))).hasMatch();
}

} // namespace

void FFMpegProcessor::setCommand(const QString &arguments, quint32 durationMs, bool withProgress)
{
    m_arguments = arguments;
    m_durationMs = durationMs == 0 ? defaultDurationMs : durationMs;
    m_withProgress = withProgress;
}

void FFMpegProcessor::start()
{
    setState(ProcessorStarted);
    QString command = QStringLiteral("\"%1\" %2").arg(ffmpegPath(), m_arguments);
    if (m_withProgress)
        command += QLatin1String(" -progress pipe:1");
    launch(command);
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

void FFMpegProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    if (isFinal())
        return;
    drain();
    const QString report = tail().text();
    const bool complete = exitCode == 0 && status == QProcess::NormalExit;
    if (complete && !reportsLostOutput(report)) {
        CLOG(INFO, "default") << "FFmpeg cmd:" << m_arguments;
        CLOG(INFO, "default") << report;
        setState(ProcessorFinished);
        return;
    }
    logFailure(exitCode);
    setState(ProcessorError);
}
