// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/filetoolprocessor.h"

/// Base of the runners of the two tools that rewrap a streaming service's files: they take one
/// enciphered argument and tell progress by "progress=" lines.
class RewrapProcessor : public FileToolProcessor
{
    Q_OBJECT

public:
    using FileToolProcessor::FileToolProcessor;

    void start() override;
    /// Kills the tool, whatever `force` says.
    void stop(bool force) override;

protected:
    virtual QString tool() const = 0;
    /// What the tool is told, its fields separated by "|".
    virtual QString plainArgument() const = 0;

    void childOutput(const QByteArray &bytes) override;

private:
    LineSplitter m_output;
};
