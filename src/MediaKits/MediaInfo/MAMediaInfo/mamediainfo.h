// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/mediainfobase.h"

/// Reads a file's facts in process through the MediaInfo library. `start` blocks while the library
/// opens the file, some milliseconds, and all signals have come when it returns. A file without
/// media gives `error` alone.
class MAMediaInfo : public MediaInfoBase
{
    Q_OBJECT

public:
    using MediaInfoBase::MediaInfoBase;

    void start() override;
};

/// How far the library looks into a file.
enum class ReadDepth {
    Streams,
    Headers, ///< enough for what containers tell; some codecs' own facts stay unknown
};

/// Reads a file in process, which takes some milliseconds.
/// @return null for a file without media
QSharedPointer<MediaInfoData> readWithLibrary(const QString &path, ReadDepth depth);
