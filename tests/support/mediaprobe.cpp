// SPDX-License-Identifier: MIT
#include "support/mediaprobe.h"

#include "support/toolrun.h"

#include <QJsonArray>
#include <QJsonDocument>

ProbedFile probeMedia(const QString &path)
{
    const ToolRun run = runTool("ffprobe"_s, {"-v"_s, "error"_s, "-show_format"_s,
                                              "-show_streams"_s, "-of"_s, "json"_s, path});
    const QJsonObject document = QJsonDocument::fromJson(run.out).object();
    const QJsonObject format = document["format"_s].toObject();
    ProbedFile file;
    file.container = format["format_name"_s].toString();
    file.seconds = format["duration"_s].toString().toDouble();
    const QJsonArray streams = document["streams"_s].toArray();
    for (const QJsonValue &value : streams) {
        const QJsonObject stream = value.toObject();
        const QString type = stream["codec_type"_s].toString();
        if (type == "video"_s && file.video.isEmpty())
            file.video = stream;
        else if (type == "audio"_s && file.audio.isEmpty())
            file.audio = stream;
    }
    return file;
}
