// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/toolprocessor.h"

/// Base of the runners of tools that turn one file into another and know no quit key: a stop
/// kills them, and the exit code alone tells how they ended.
class FileToolProcessor : public ToolProcessor
{
    Q_OBJECT

public:
    using ToolProcessor::ToolProcessor;

protected:
    bool knowsQuitKey() const override { return false; }
    void childOutput(const QByteArray &) override {}
    void childFinished(int exitCode, QProcess::ExitStatus status) override;
};
