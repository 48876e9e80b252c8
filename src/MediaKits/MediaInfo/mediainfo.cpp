// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/mediainfo.h"

#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "platform/wordsize.h"

#include <QFileInfo>

MediaInfoBase *createMediaInfo(const QString &format, const QString &path, QObject *parent)
{
    const double sizeGiB = double(QFileInfo(path).size()) / double(1 << 30);
    if ((sizeGiB < 3.0 || !isWideSystem()) && format != QLatin1String("QSV"))
        return new MAMediaInfo(path, parent);
    return new FFMediaInfo(path, parent);
}
