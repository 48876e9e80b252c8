// SPDX-License-Identifier: MIT
#include "screencap/capturecommand.h"

#include "MediaKits/MediaFormats/toolquoting.h"

namespace {

const QString systemSound = QStringLiteral("MorvaneVirtualAudioCapturer");
const QString soundInput = QStringLiteral(" -f dshow -i audio=\"%1\"");
const QString commandTemplate =
    QStringLiteral("-f dshow -i video=\"MorvaneScreenRecorder\" %1 %2 -vcodec libx264 "
                   "-acodec libmp3lame %3 -y %4");

QString sizeArgument(const QSize &box)
{
    return box.isEmpty() ? QString()
                         : QStringLiteral("-s %1x%2").arg(box.width()).arg(box.height());
}

} // namespace

QSize CaptureCommand::boxOf(int definition)
{
    if (definition == 0)
        return {1280, 720};
    return definition == 1 ? QSize(1920, 1080) : QSize();
}

QString CaptureCommand::text() const
{
    QString sounds;
    if (isPlayedSoundWanted)
        sounds += soundInput.arg(systemSound);
    for (const QString &input : inputs) {
        if (input != systemSound)
            sounds +=
                soundInput.arg(QString(input).replace(QLatin1Char('"'), QLatin1String("\"\"\"")));
    }
    // All at once: a name may hold a place's mark.
    return commandTemplate.arg(sounds, QString(),
                               isFullScreen ? sizeArgument(boxOf(definition)) : QString(),
                               quoteToolPath(outputPath));
}
