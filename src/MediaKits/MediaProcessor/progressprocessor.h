// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/toolprocessor.h"

/// What the runners of ffmpeg and its kin share: an argument text, ffmpeg's progress protocol on
/// standard output, and the media's length, which ffmpeg's own report can only lower.
class ProgressProcessor : public ToolProcessor
{
    Q_OBJECT

public:
    using ToolProcessor::ToolProcessor;

protected:
    /// Progress for a position that the tool reports, in microseconds.
    virtual double progressAt(qint64 positionUs, quint32 durationMs) const = 0;

    void childOutput(const QByteArray &bytes) override;
    void childReport(const QByteArray &bytes) override;

    /// Writes a failed run to the log.
    void logFailure(int exitCode) const;

    QString m_arguments;
    quint32 m_durationMs = 0;
    bool m_withProgress = true;

private:
    void readPendingDuration();

    bool m_durationPending = true;
    LineSplitter m_output;
    QByteArray m_unreadReport;
};
