// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"

#include "MediaKits/MediaFormats/mediatexts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Turned by an odd number of quarter turns.
bool isUpright(const VEncParam &video)
{
    return std::abs(std::remainder(video.rotate, 180.0)) > 45.0;
}

} // namespace

void MediaFacts::setFile(const MediaFormatInfo &file)
{
    constexpr qint64 longestMs = std::numeric_limits<int>::max();
    duration = timeText(int(std::clamp<qint64>(file.duration, 0, longestMs)));
    size = sizeText(file.fileSize);
}

QString MediaFacts::sizeInPixels(int width, int height)
{
    return width > 0 && height > 0 ? QStringLiteral("%1x%2").arg(width).arg(height) : QString();
}

QString MediaFacts::sizeInPixels(const QSharedPointer<VEncParam> &video)
{
    if (!video)
        return {};
    return isUpright(*video) ? sizeInPixels(video->height, video->width)
                             : sizeInPixels(video->width, video->height);
}
