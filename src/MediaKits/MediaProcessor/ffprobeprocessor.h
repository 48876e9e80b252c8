// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/toolprocessor.h"

/// Runs ffprobe once and collects what it prints.
class FFProbeProcessor : public ToolProcessor
{
    Q_OBJECT

public:
    explicit FFProbeProcessor(QObject *parent = nullptr);

    /// @param arguments everything behind the program, with its file names already quoted
    void setArguments(const QString &arguments) { m_arguments = arguments; }
    /// Standard output so far, each read cut at its first zero byte.
    QString output() const;

    void start() override;

protected:
    void childOutput(const QByteArray &bytes) override;
    void childFinished(int exitCode, QProcess::ExitStatus status) override;

private:
    QString m_arguments;
    QByteArray m_output;
};
