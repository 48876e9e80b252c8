// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegaccount.h"
#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/toolprocessor.h"

#include <limits>

/// What the runners of ffmpeg and its kin share: an argument text, ffmpeg's progress protocol on
/// standard output, and the media's length, which ffmpeg's own report can only lower.
class ProgressProcessor : public ToolProcessor
{
    Q_OBJECT

public:
    using ToolProcessor::ToolProcessor;

    /// What the tool has told about its work so far.
    FFmpegAccount account() const { return m_account.account(); }

protected:
    /// Progress that overruns the expected length waits here for the end of the tool.
    static constexpr double overrunProgress = 0.999;

    /// Progress for a position that the tool reports, in microseconds.
    virtual double progressAt(qint64 positionUs, quint32 durationMs) const = 0;

    void childOutput(const QByteArray &bytes) override;
    void childReport(const QByteArray &bytes) override;
    /// A run has ended well when the exit code says so and the report doesn't tell of a loss that
    /// ffmpeg thinks little of.
    void childFinished(int exitCode, QProcess::ExitStatus status) override;

    /// Forgets what the run before has told.
    void resetAccount() { m_account = {}; }

    QString m_arguments;
    quint32 m_durationMs = 0;
    bool m_withProgress = true;

private:
    void takeToldDuration();

    bool m_durationPending = true;
    bool m_lengthIsTold = false;
    quint32 m_toldMs = std::numeric_limits<quint32>::max(); ///< the shortest length that was told
    LineSplitter m_output;
    LineSplitter m_report;
    FFmpegAccountReader m_account;
};
