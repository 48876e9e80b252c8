// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/progressprocessor.h"

/// Runs the ffmpeg that reads KUX files.
class KuxProcessor : public ProgressProcessor
{
    Q_OBJECT

public:
    using ProgressProcessor::ProgressProcessor;

    /// @param arguments everything behind the program, with its file names already quoted
    /// @param durationMs upper bound of the media's length in ms
    void setCommand(const QString &arguments, quint32 durationMs);

    void start() override;
    /// The state follows when the child has ended, with `force` before this returns.
    void stop(bool force) override;

protected:
    double progressAt(qint64 positionUs, quint32 durationMs) const override;
};
