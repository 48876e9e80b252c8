// SPDX-License-Identifier: MIT
#include "screencap/capturecommand.h"

#include "MediaKits/MediaFormats/toolquoting.h"

namespace {

const QString systemSound = QStringLiteral("MorvaneVirtualAudioCapturer");
const QString soundInput = QStringLiteral(" -f dshow -i audio=\"%1\"");
const QString commandTemplate =
    QStringLiteral("-f dshow -i video=\"MorvaneScreenRecorder\" %1 %2 -vcodec libx264 "
                   "-acodec libmp3lame %3 -y %4");

QString sizeArgument(int definition)
{
    if (definition == 0)
        return QStringLiteral("-s 1280x720");
    return definition == 1 ? QStringLiteral("-s 1920x1080") : QString();
}

} // namespace

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
                               isFullScreen ? sizeArgument(definition) : QString(),
                               quoteToolPath(outputPath));
}
