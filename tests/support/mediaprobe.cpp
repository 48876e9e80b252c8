// SPDX-License-Identifier: MIT
#include "support/mediaprobe.h"

#include "support/toolrun.h"

#include <QJsonArray>
#include <QJsonDocument>

ProbedFile probeMedia(const QString &path)
{
    const ToolRun run = runTool(QStringLiteral("ffprobe"),
                                {QStringLiteral("-v"), QStringLiteral("error"),
                                 QStringLiteral("-show_format"), QStringLiteral("-show_streams"),
                                 QStringLiteral("-of"), QStringLiteral("json"), path});
    const QJsonObject document = QJsonDocument::fromJson(run.out).object();
    const QJsonObject format = document[QLatin1String("format")].toObject();
    ProbedFile file;
    file.container = format[QLatin1String("format_name")].toString();
    file.seconds = format[QLatin1String("duration")].toString().toDouble();
    const QJsonArray streams = document[QLatin1String("streams")].toArray();
    for (const QJsonValue &value : streams) {
        const QJsonObject stream = value.toObject();
        const QString type = stream[QLatin1String("codec_type")].toString();
        if (type == QLatin1String("video") && file.video.isEmpty())
            file.video = stream;
        else if (type == QLatin1String("audio") && file.audio.isEmpty())
            file.audio = stream;
    }
    return file;
}
