// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/progressprocessor.h"

#include "MediaKits/Logger/logger.h"

#include <QPointer>

void ProgressProcessor::childOutput(const QByteArray &bytes)
{
    const QPointer<ProgressProcessor> alive(this);
    const QVector<qint64> positions = progressPositionsUs(m_output.feed(toolText(bytes)));
    for (const qint64 positionUs : positions) {
        if (!alive)
            return;
        m_account.feedPosition(positionUs);
        if (m_withProgress && m_durationMs != 0)
            emit progressChanged(progressAt(positionUs, m_durationMs));
    }
    if (alive)
        readPendingDuration();
}

void ProgressProcessor::childReport(const QByteArray &bytes)
{
    ToolProcessor::childReport(bytes);
    m_account.feedReport(bytes);
    if (m_durationPending && m_withProgress)
        m_unreadReport += bytes;
}

// The report is looked at only when progress comes: by then every input has been told, so that
// the shortest of several inputs counts.
void ProgressProcessor::readPendingDuration()
{
    if (!m_durationPending)
        return;
    // A line may come in two reads; its beginning waits for its end.
    const int wholeLines = m_unreadReport.lastIndexOf('\n') + 1;
    if (lowerDurationFromReport(toolText(m_unreadReport.left(wholeLines)), m_durationMs))
        m_durationPending = false;
    m_unreadReport.remove(0, m_durationPending ? wholeLines : m_unreadReport.size());
}

void ProgressProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    const QString report = tail().text();
    const bool isWhole = !reportsLostOutput(report) && !account().inputUnreadable;
    if (endedWell(exitCode, status) && isWhole) {
        CLOG(INFO, "default") << "FFmpeg cmd:" << m_arguments;
        CLOG(INFO, "default") << report;
        setState(ProcessorFinished);
        return;
    }
    CLOG(ERROR, "default") << "FFmpeg exitCode=" << exitCode;
    CLOG(ERROR, "default") << "FFmpeg cmd:" << m_arguments;
    CLOG(ERROR, "default") << "FFmpeg Info=" << report;
    setState(ProcessorError);
}
