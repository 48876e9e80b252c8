// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/factsstream.h"
#include "MediaKits/MediaInfo/mediainfobase.h"

/// Reads a file's facts through the MediaInfo library, in a process that serves many files: the
/// library hangs on a few damaged ones. Such a file is left to ffprobe. A file without media gives
/// `error` alone.
class MAMediaInfo : public MediaInfoBase
{
    Q_OBJECT

public:
    MAMediaInfo(const QString &path, QObject *parent, ReadDepth depth = ReadDepth::Streams);

    void start() override;

private:
    void take(const ReadAnswer &answer);
    void askOther();
    void succeed(const QSharedPointer<MediaInfoData> &info, int kind);

    ReadDepth m_depth;
};
