// SPDX-License-Identifier: MIT
#include "cli/consoleprogress.h"

#include "MediaKits/MediaFormats/mediatexts.h"
#include "platform/terminal.h"

#include <cstdio>

namespace {

constexpr int barWidth = 30;
// Faster than anybody reads, slower than a tool's own reports.
constexpr int showIntervalMs = 100;

} // namespace

ConsoleProgress::ConsoleProgress() : m_onTerminal(isTerminal(stderr))
{
    m_total.start();
}

QString ConsoleProgress::line(double done, qint64 elapsedMs, const QString &suffix)
{
    const int filled = int(done * barWidth);
    const QString bar = QString(filled, QLatin1Char('#')).leftJustified(barWidth);
    // The clock's text has no days.
    constexpr double longestMs = 24.0 * 3600.0 * 1000.0;
    const double leftMs = done > 0.0 ? (1.0 - done) * (double(elapsedMs) / done) : longestMs;
    const QString left = leftMs < longestMs ? timeText(int(leftMs)) : QStringLiteral("--:--:--");
    return QStringLiteral("[%1] %2%  %3  %4")
        .arg(bar, QString::number(done * 100.0, 'f', 1).rightJustified(5), left, suffix);
}

void ConsoleProgress::show(double done, const QString &suffix)
{
    if (!m_onTerminal || (m_sinceShown.isValid() && m_sinceShown.elapsed() < showIntervalMs))
        return;
    m_sinceShown.start();
    m_visible = true;
    const QByteArray text = line(done, m_total.elapsed(), suffix).toUtf8();
    std::fprintf(stderr, "\r%s\033[K", text.constData());
    std::fflush(stderr);
}

void ConsoleProgress::clear()
{
    if (!m_visible)
        return;
    m_visible = false;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
}
