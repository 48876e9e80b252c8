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
    void setFiles(const QString &input, const QString &output);
    QString inputFile() const { return m_inputFile; }
    QString outputFile() const { return m_outputFile; }

    bool knowsQuitKey() const override { return false; }
    void childOutput(const QByteArray &bytes) override;
    void childFinished(int exitCode, QProcess::ExitStatus status) override;

private:
    QString m_inputFile;
    QString m_outputFile;
};
