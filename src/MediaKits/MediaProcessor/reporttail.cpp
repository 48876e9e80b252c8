// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/reporttail.h"

#include <QRegularExpression>

namespace {

// ffmpeg rewrites lines such as "frame=   12 fps=0.0 q=28.0 size= ..." in place.
bool isStatusLine(const QString &line)
{
    return line.contains(QLatin1String("bitrate=")) && line.contains(QLatin1String("time="));
}

// What the H.264 and H.265 encoders count up when they are closed, a dozen lines behind the last
// one that tells something.
bool isEncoderSummary(const QString &line)
{
    static const QRegularExpression summary(QStringLiteral(
        "^\\[libx26[45] @ [^\\]]+\\] (frame [IPB]|mb [IPB]|consecutive B|8x8 transform|coded y|"
        "i\\d+c? |Weighted |ref [PB] |final ratefactor|kb/s:|using |profile |264 - core)"));
    return summary.match(line).hasMatch();
}

} // namespace

void ReportTail::append(const QByteArray &bytes)
{
    m_bytes += bytes;
    if (m_bytes.size() > 2 * keptBytes)
        m_bytes = m_bytes.right(keptBytes);
}

QString ReportTail::text() const
{
    return toolText(m_bytes);
}

QStringList ReportTail::lastLines(int count) const
{
    static const QRegularExpression lineEnds(QStringLiteral("[\\r\\n]+"));
    QStringList kept;
    const QStringList lines = text().split(lineEnds, Qt::SkipEmptyParts);
    for (auto it = lines.crbegin(); it != lines.crend() && kept.size() < count; ++it) {
        const QString line = it->trimmed();
        if (!line.isEmpty() && !isStatusLine(line) && !isEncoderSummary(line))
            kept.prepend(line);
    }
    return kept;
}

QString toolText(const QByteArray &bytes)
{
    const int zero = bytes.indexOf('\0');
    return QString::fromUtf8(bytes.constData(), zero < 0 ? bytes.size() : zero);
}
