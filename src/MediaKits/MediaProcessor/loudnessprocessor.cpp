// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/loudnessprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QRegularExpression>

namespace {
// Enough to tell, and soon told of a long film.
const QString measuredSeconds = QStringLiteral("600");
} // namespace

LoudnessProcessor::LoudnessProcessor(const QString &file, QObject *parent)
    : ToolProcessor(parent), m_file(file)
{
}

void LoudnessProcessor::start()
{
    m_loudness.reset();
    launch(ffmpegPath(), {QStringLiteral("-hide_banner"), QStringLiteral("-nostats"),
                          QStringLiteral("-t"), measuredSeconds, QStringLiteral("-i"), m_file,
                          QStringLiteral("-map"), QStringLiteral("0:a:0"), QStringLiteral("-af"),
                          QStringLiteral("ebur128=framelog=verbose"), QStringLiteral("-f"),
                          QStringLiteral("null"), QStringLiteral("-")});
}

void LoudnessProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    static const QRegularExpression integrated(QStringLiteral("\\n\\s*I:\\s*(-?[0-9.]+) LUFS"));
    const QRegularExpressionMatch match = integrated.match(tail().text());
    if (endedWell(exitCode, status) && match.hasMatch())
        m_loudness = match.captured(1).toDouble();
    setState(m_loudness ? ProcessorFinished : ProcessorError);
}
