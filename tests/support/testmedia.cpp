// SPDX-License-Identifier: MIT
#include "support/testmedia.h"

#include "support/toolrun.h"

#include <QDir>
#include <QTest>

namespace {

void runFfmpeg(const QStringList &arguments)
{
    const ToolRun run =
        runTool(QStringLiteral("ffmpeg"),
                QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} +
                    arguments);
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

} // namespace

void makeClip(const QString &path, const ClipPlan &plan)
{
    const QString length = QString::number(plan.seconds);
    QStringList arguments;
    if (plan.width > 0) {
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("testsrc=d=%1:s=%2x%3:r=%4")
                         .arg(length)
                         .arg(plan.width)
                         .arg(plan.height)
                         .arg(plan.frameRate);
    }
    if (plan.channels > 0) {
        QStringList tones;
        for (int channel = 0; channel < plan.channels; ++channel)
            tones += QStringLiteral("0.2*sin(%1*2*PI*t)").arg(220 * (channel + 1));
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("aevalsrc=%1:s=%2:d=%3:c=%4")
                         .arg(tones.join(QLatin1Char('|')))
                         .arg(plan.sampleRate)
                         .arg(length, plan.channels == 6   ? QStringLiteral("5.1")
                                      : plan.channels == 1 ? QStringLiteral("mono")
                                                           : QStringLiteral("stereo"));
    }
    if (plan.width > 0 && path.endsWith(QLatin1String(".mp4")))
        arguments << QStringLiteral("-pix_fmt") << QStringLiteral("yuv420p");
    arguments << path;
    runFfmpeg(arguments);
}

void makePicture(const QString &path, const QString &colour, int width, int height)
{
    runFfmpeg({QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
               QStringLiteral("color=%1:s=%2x%3").arg(colour).arg(width).arg(height),
               QStringLiteral("-frames:v"), QStringLiteral("1"), QStringLiteral("-update"),
               QStringLiteral("1"), path});
}

QStringList entriesOf(const QString &dir)
{
    return QDir(dir).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}
