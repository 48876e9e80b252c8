// SPDX-License-Identifier: MIT
#include "rewrap/rewrap.h"

#include "MediaKits/MediaProcessor/argumentcipher.h"
#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/reporttail.h"
#include "platform/childprocess.h"
#include "platform/executable.h"
#include "platform/openfolder.h"

#include <QFileInfo>

#include <cstdio>

namespace {

// Lies beside the tools.
QString ffmpeg()
{
    return QFileInfo(executablePath()).path() + QLatin1String("/ffmpeg");
}

// Matroska takes nearly every codec, and ffmpeg knows it by its content, whatever suffix the
// program has chosen.
QStringList copyArguments(const RewrapOrder &order)
{
    return {
        QStringLiteral("-hide_banner"),
        QStringLiteral("-nostdin"),
        QStringLiteral("-y"),
        QStringLiteral("-i"),
        order.input,
        QStringLiteral("-map"),
        QStringLiteral("0:v?"),
        QStringLiteral("-map"),
        QStringLiteral("0:a?"),
        QStringLiteral("-c"),
        QStringLiteral("copy"),
        QStringLiteral("-f"),
        QStringLiteral("matroska"),
        QStringLiteral("-progress"),
        QStringLiteral("pipe:1"),
        order.output,
    };
}

void say(FILE *stream, const QString &line)
{
    std::fprintf(stream, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stream);
}

// Hands ffmpeg's position on as a fraction of the length that its report tells.
class Progress
{
public:
    void addReport(const QByteArray &bytes)
    {
        if (m_known)
            return;
        m_known = lowerDurationFromReport(toolText(m_report += bytes), m_durationMs);
        m_report.remove(0, m_report.lastIndexOf('\n') + 1);
    }
    void addOutput(const QByteArray &bytes)
    {
        const auto positions = progressPositionsUs(m_lines.feed(toolText(bytes)));
        for (const qint64 positionUs : positions) {
            const double fraction = double(positionUs) / (double(m_durationMs) * 1000.0);
            if (m_known)
                say(stdout, QStringLiteral("progress=%1").arg(qBound(0.0, fraction, 1.0)));
        }
    }

private:
    LineSplitter m_lines;
    QByteArray m_report;
    quint32 m_durationMs = 0xffffffff;
    bool m_known = false;
};

} // namespace

std::optional<RewrapOrder> readOrder(const QByteArray &argument, int fields)
{
    const auto plain = decipherArguments(argument);
    if (!plain)
        return std::nullopt;
    const QStringList parts = QString::fromLocal8Bit(*plain).split(QLatin1Char('|'));
    if (parts.size() != fields || parts[0].isEmpty() || parts[1].isEmpty())
        return std::nullopt;
    bool hasMode = true;
    if (fields > 2)
        parts[2].toInt(&hasMode);
    return hasMode ? std::make_optional(RewrapOrder{parts[0], parts[1]}) : std::nullopt;
}

int rewrap(const RewrapOrder &order)
{
    // Frozen and woken together with this tool.
    ChildProcess child(nullptr, ChildProcess::Group::Program);
    Progress progress;
    ReportTail report;
    QObject::connect(&child, &QProcess::readyReadStandardOutput, &child,
                     [&] { progress.addOutput(child.readAllStandardOutput()); });
    QObject::connect(&child, &QProcess::readyReadStandardError, &child, [&] {
        const QByteArray bytes = child.readAllStandardError();
        report.append(bytes);
        progress.addReport(bytes);
    });
    child.start(ffmpeg(), copyArguments(order), QIODevice::ReadOnly);
    child.waitForFinished(-1);
    if (child.exitStatus() == QProcess::NormalExit && child.error() == QProcess::UnknownError &&
        child.exitCode() == 0 && !reportsLostOutput(report.text()))
        return 0;

    const QFileInfo output(order.output);
    OpenFolder::at(output.path()).remove(output.fileName());
    constexpr int shownLines = 3;
    const QStringList lines = report.lastLines(shownLines);
    for (const QString &line : lines)
        say(stderr, line);
    say(stderr, QStringLiteral("无法识别文件内容，它可能经过加密：%1").arg(order.input));
    return 1;
}
