// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/progressprocessor.h"

/// Runs one ffmpeg command and follows its progress protocol.
class FFMpegProcessor : public ProgressProcessor
{
    Q_OBJECT

public:
    using ProgressProcessor::ProgressProcessor;

    /// @param arguments everything behind the program, with its file names already quoted
    /// @param durationMs length of the media in ms, the denominator of progress and an upper bound:
    ///        ffmpeg's own report can only lower it; 0 stands for ninety minutes
    /// @param withProgress adds the progress option; without it no progress is signalled
    void setCommand(const QString &arguments, quint32 durationMs, bool withProgress);

    void start() override;

protected:
    double progressAt(qint64 positionUs, quint32 durationMs) const override;
    void childRunning() override;
};
