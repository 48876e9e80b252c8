// SPDX-License-Identifier: MIT
#include "support/testmedia.h"

#include <QDir>
#include <QTest>

ToolRun runFfmpeg(const QString &options, const QStringList &paths)
{
    QStringList arguments = ("-v error -y "_s + options).split(u' ', Qt::SkipEmptyParts);
    auto path = paths.cbegin();
    for (QString &argument : arguments) {
        if (argument == "@"_s)
            argument = *path++;
    }
    return runTool("ffmpeg"_s, arguments);
}

void makeMedia(const QString &options, const QStringList &paths)
{
    const ToolRun run = runFfmpeg(options, paths);
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

QByteArray decodedMedia(const QString &path, const QString &options)
{
    return runFfmpeg("-i @ "_s + options + " -"_s, {path}).out;
}

void makeClip(const QString &path, const ClipPlan &plan)
{
    const QString length = QString::number(plan.seconds);
    QString options;
    if (plan.width > 0)
        options += "-f lavfi -i testsrc=d=%1:s=%2x%3:r=%4 "_s.arg(length)
                       .arg(plan.width)
                       .arg(plan.height)
                       .arg(plan.frameRate);
    if (plan.channels > 0) {
        QStringList tones;
        for (int channel = 0; channel < plan.channels; ++channel)
            tones += "0.2*sin(%1*2*PI*t)"_s.arg(220 * (channel + 1));
        const QString layout = plan.channels == 6   ? "5.1"_s
                               : plan.channels == 1 ? "mono"_s
                                                    : "stereo"_s;
        options += "-f lavfi -i aevalsrc=%1:s=%2:d=%3:c=%4 "_s.arg(tones.join(u'|'))
                       .arg(plan.sampleRate)
                       .arg(length, layout);
    }
    if (plan.width > 0 && path.endsWith(".mp4"_s))
        options += "-pix_fmt yuv420p "_s;
    makeMedia(options + "@"_s, {path});
}

void makePicture(const QString &path, const QString &colour, int width, int height)
{
    makeMedia(
        "-f lavfi -i color=%1:s=%2x%3 -frames:v 1 -update 1 @"_s.arg(colour).arg(width).arg(height),
        {path});
}

QStringList entriesOf(const QString &dir)
{
    return QDir(dir).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}
