// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/mediainfo.h"

#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "platform/wordsize.h"

#include <QFileInfo>

namespace {

bool isForLibrary(const QString &format, const QString &path)
{
    const double sizeGiB = double(QFileInfo(path).size()) / double(1 << 30);
    return (sizeGiB < 3.0 || !isWideSystem()) && format != QLatin1String("QSV");
}

} // namespace

MediaInfoBase *createMediaInfo(const QString &format, const QString &path, QObject *parent)
{
    if (isForLibrary(format, path))
        return new MAMediaInfo(path, parent);
    return new FFMediaInfo(path, parent);
}
