// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegreport.h"

#include <QRegExp>
#include <QRegularExpression>
#include <QStringList>
#include <QTime>

#include <algorithm>

// What has no line ends is no report.
static constexpr int longestLine = 64 * 1024;

QStringList LineSplitter::feed(const QString &text)
{
    QStringList lines = (m_rest + text).split(QLatin1Char('\n'));
    m_rest = lines.takeLast();
    if (m_rest.size() > longestLine)
        m_rest.clear();
    return lines;
}

QVector<qint64> progressPositionsUs(const QStringList &lines)
{
    static const QLatin1String key("out_time_ms=");
    QVector<qint64> positions;
    for (const QString &line : lines) {
        if (line.startsWith(key))
            positions.append(std::max(line.mid(key.size()).toLongLong(), 0LL));
    }
    return positions;
}

bool lowerDurationFromReport(const QString &report, quint32 &durationMs)
{
    static const QRegExp pattern(QStringLiteral("([0-9]{2}\\:){2}[0-9]{2}\\.[0-9]{2}"));
    bool seen = false;
    const QStringList lines = report.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QRegExp time(pattern);
        if (!line.startsWith(QLatin1String("  Duration:")) || time.indexIn(line) < 0)
            continue;
        seen = true;
        // The report counts hundredths; a third digit makes them milliseconds.
        const QTime length =
            QTime::fromString(time.cap() + QLatin1Char('0'), QStringLiteral("hh:mm:ss.zzz"));
        const int lengthMs = length.isValid() ? QTime(0, 0).msecsTo(length) : 0;
        if (lengthMs != 0 && durationMs > quint32(lengthMs))
            durationMs = quint32(lengthMs);
    }
    return seen;
}

// ffmpeg ends with exit code 0 when only the last bytes of its output could not be written; lines
// of its report that begin so then tell that the file is cut off. A file's or a tag's name may hold
// the same words, but not at the start of a line.
bool reportsLostOutput(const QString &report)
{
    static const QRegularExpression lost(
        QStringLiteral("^(av_interleaved_write_frame\\(\\): |Error writing trailer of |"
                       "Error closing file )"),
        QRegularExpression::MultilineOption);
    return lost.match(QString(report).replace(QLatin1Char('\r'), QLatin1Char('\n'))).hasMatch();
}

// "name: reason" at the start of a line; tags of files are indented, what filters and formats say
// begins with a bracket, and what is said of the output with these words.
bool tellsUnreadableInput(const QString &line)
{
    static const QRegularExpression unreadable(QStringLiteral(
        "^(?!av_interleaved_write_frame|Error |\\[| ).*: (Input/output error|Remote I/O error|"
        "Stale file handle|No such device|No such device or address|Connection timed out|"
        "Connection reset by peer|Host is down|Transport endpoint is not connected)$"));
    return unreadable.match(line).hasMatch();
}
