// SPDX-License-Identifier: MIT
#include "cli/recordjson.h"

QJsonObject videoFields(const VEncParam &video)
{
    return {
        {QStringLiteral("fourCC"), video.fourCC},       {QStringLiteral("width"), video.width},
        {QStringLiteral("height"), video.height},       {QStringLiteral("bitrate"), video.bitrate},
        {QStringLiteral("frameRate"), video.frameRate},
    };
}

QJsonObject audioFields(const AEncParam &audio)
{
    return {
        {QStringLiteral("fourCC"), audio.fourCC},
        {QStringLiteral("channel"), audio.channel},
        {QStringLiteral("sampleRate"), audio.sampleRate},
        {QStringLiteral("bitrate"), audio.bitrate},
    };
}
