// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

/// The environment variable in which the launcher of ffmpeg is told of the source. The command text
/// says what is wanted; what that takes depends on the source.
const QString sourceVariable = QStringLiteral("MORVANE_SOURCE");

/// Whether the cover of a song can be shown.
enum class SourceCover {
    Usual,
    Lost, ///< it can't be decoded, black stands in its place
};

/// What the launcher needs to know of a source, as "key=value" joined by semicolons: "size" as
/// stored, "turned", "rate", "transfer", "primaries", "matrix" of its first picture and "cover",
/// 1 or "lost". What is unknown or usual is left out.
QString sourceFacts(const MediaInfoData &info, SourceCover cover = SourceCover::Usual);
