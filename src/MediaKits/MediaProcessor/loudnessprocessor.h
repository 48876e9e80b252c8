// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/toolprocessor.h"

#include <optional>

/// Measures how loud a file's first sound is, as listeners judge it.
class LoudnessProcessor : public ToolProcessor
{
    Q_OBJECT

public:
    explicit LoudnessProcessor(const QString &file, QObject *parent = nullptr);

    void start() override;

    /// In LUFS, of the first ten minutes; nothing before the end, and for a file without sound.
    std::optional<double> loudness() const { return m_loudness; }

protected:
    void childOutput(const QByteArray &) override {}
    void childFinished(int exitCode, QProcess::ExitStatus status) override;

private:
    const QString m_file;
    std::optional<double> m_loudness;
};
