// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"

#include <QEventLoop>

/// What the library's reader says of a file; waits for it. Null for a file without media.
inline QSharedPointer<MediaInfoData> factsOf(const QString &path,
                                             ReadDepth depth = ReadDepth::Streams)
{
    MAMediaInfo reader(path, nullptr, depth);
    QEventLoop loop;
    QObject::connect(&reader, &MediaInfoBase::got, &loop, &QEventLoop::quit);
    QObject::connect(&reader, &MediaInfoBase::error, &loop, &QEventLoop::quit);
    reader.start();
    loop.exec();
    return reader.mediaInfo();
}
