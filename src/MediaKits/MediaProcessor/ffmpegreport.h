// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

/// Joins chunks of a stream into whole lines; the unfinished last line waits for the next chunk,
/// unless it is far longer than any that is looked for.
class LineSplitter
{
public:
    /// @return the lines that `text` completes, without their line ends
    QStringList feed(const QString &text);

private:
    QString m_rest;
};

/// Positions that ffmpeg's "-progress" protocol reports in these lines.
/// @return one value per "out_time_ms=" line, in microseconds (what ffmpeg writes there, whatever
///         the key's name says); an unreadable or negative value counts as 0
QVector<qint64> progressPositionsUs(const QStringList &lines);

/// Reads the "  Duration: hh:mm:ss.cc" lines of ffmpeg's report.
/// @param durationMs the expected length in ms, lowered to the shortest length that is reported
/// @return true when at least one line held a time
bool lowerDurationFromReport(const QString &report, quint32 &durationMs);

/// Whether ffmpeg's report tells that the end of the output could not be written, as on a full
/// disk. The exit code doesn't.
bool reportsLostOutput(const QString &report);

/// Whether a line of ffmpeg's report says that the system could not read an input any further, as
/// on a failing disk or a share that went away. The exit code doesn't.
bool tellsUnreadableInput(const QString &line);
