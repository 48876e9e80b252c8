// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/progressprocessor.h"

#include "MediaKits/Logger/logger.h"

#include <QPointer>

#include <algorithm>

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
        takeToldDuration();
}

void ProgressProcessor::childReport(const QByteArray &bytes)
{
    ToolProcessor::childReport(bytes);
    m_account.feedReport(bytes);
    if (!m_durationPending || !m_withProgress)
        return;
    for (const QString &line : m_report.feed(toolText(bytes)))
        m_lengthIsTold |= lowerDurationFromReport(line, m_toldMs);
}

// The lengths count when progress comes: by then every input has been told, so that the shortest of
// several inputs counts.
void ProgressProcessor::takeToldDuration()
{
    if (!m_durationPending || !m_lengthIsTold)
        return;
    m_durationMs = std::min(m_durationMs, m_toldMs);
    m_durationPending = false;
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
