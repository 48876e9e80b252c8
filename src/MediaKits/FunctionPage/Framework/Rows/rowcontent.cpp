// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"

#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaInfo/shownpicture.h"

#include <algorithm>
#include <limits>

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
    const QSize size = video ? turnedSize(*video) : QSize();
    return sizeInPixels(size.width(), size.height());
}
