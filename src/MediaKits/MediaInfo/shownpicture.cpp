// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/shownpicture.h"

#include <cmath>

bool isUpright(const VEncParam &video)
{
    return std::abs(std::remainder(video.rotate, 180.0)) > 45.0;
}

QSize turnedSize(const VEncParam &video)
{
    const QSize size(video.width, video.height);
    return isUpright(video) ? size.transposed() : size;
}

double turnedPixelAspect(const VEncParam &video)
{
    const double aspect = video.pixelAspect > 0 ? video.pixelAspect : 1.0;
    return isUpright(video) ? 1.0 / aspect : aspect;
}

QSize squarePixelSize(const QSize &size, double pixelAspect)
{
    if (pixelAspect < 1.0)
        return {size.width(), qRound(size.height() / pixelAspect)};
    return {qRound(size.width() * pixelAspect), size.height()};
}

QSize shownSize(const VEncParam &video)
{
    return squarePixelSize(turnedSize(video), turnedPixelAspect(video));
}
