// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

/// The end of what a tool wrote, bounded, so that a damaged source that makes the tool complain
/// a million times costs no memory.
class ReportTail
{
public:
    /// Bytes kept at least, in the order they came.
    static constexpr int keptBytes = 64 * 1024;

    void append(const QByteArray &bytes);

    /// What was kept, read as UTF-8 up to its first zero byte.
    QString text() const;

    /// The last lines that say something: carriage returns end a line, blank lines and the
    /// tool's running status are passed over.
    /// @param count lines at most
    QStringList lastLines(int count) const;

private:
    QByteArray m_bytes;
};

/// Text of a tool's output, cut at the first zero byte.
QString toolText(const QByteArray &bytes);
