// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/filetoolprocessor.h"

/// Runs the encoder of Monkey's Audio. It tells no progress.
class MacProcessor : public FileToolProcessor
{
    Q_OBJECT

public:
    using FileToolProcessor::FileToolProcessor;

    /// @param input a WAV file
    /// @param output the APE file to make
    void setInOut(const QString &input, const QString &output);

    void start() override;

private:
    QString m_input;
    QString m_output;
};
