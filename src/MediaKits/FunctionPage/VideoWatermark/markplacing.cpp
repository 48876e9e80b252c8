// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markplacing.h"

#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "platform/lettering.h"

#include <QFont>
#include <QRectF>

#include <algorithm>
#include <cmath>

namespace {

constexpr int leastFont = 6;
constexpr double mostFont = 4096.0; // as high as a picture may be

double placeAlong(double place, double size, double whole, double newSize, double newWhole)
{
    const double room = whole - size;
    const double share = room > 0.0 ? std::clamp(place / room, 0.0, 1.0) : 0.0;
    return share * (newWhole - newSize);
}

// How many times as high a mark becomes, whose width has to find room.
double growth(const QRectF &rect, const MarkedPicture &from, const MarkedPicture &to)
{
    const double byHeight = double(to.size.height()) / from.size.height();
    const double byWidth =
        to.size.width() * to.pixelAspect / std::max(1.0, rect.width() * from.pixelAspect);
    return std::min(byHeight, byWidth);
}

QSizeF resizedText(QVariantMap &mark, double factor, const MarkedPicture &to)
{
    QFont font = mark.value(MarkKey::font).value<QFont>();
    font.setPixelSize(std::max(leastFont, qRound(std::min(font.pixelSize() * factor, mostFont))));
    mark[MarkKey::font] = font;
    const Lettering lettering{
        mark.value(MarkKey::text).toString(), font, {}, Lettering::roomyInset(font)};
    const QSize size = lettering.size();
    return {std::ceil(size.width() / to.pixelAspect / 2) * 2, double(size.height())};
}

QRectF movedRect(QVariantMap &mark, const MarkedPicture &from, const MarkedPicture &to)
{
    const QRectF rect = mark.value(MarkKey::rect).toRectF();
    const QString filter = mark.value(MarkKey::filter).toString();
    if (filter == MarkFilter::delogo) {
        const double across = double(to.size.width()) / from.size.width();
        const double down = double(to.size.height()) / from.size.height();
        return {rect.x() * across, rect.y() * down, rect.width() * across, rect.height() * down};
    }
    const double factor = growth(rect, from, to);
    const QSizeF size = filter == MarkFilter::text
                            ? resizedText(mark, factor, to)
                            : QSizeF(rect.width() * factor * from.pixelAspect / to.pixelAspect,
                                     rect.height() * factor);
    return {
        placeAlong(rect.x(), rect.width(), from.size.width(), size.width(), to.size.width()),
        placeAlong(rect.y(), rect.height(), from.size.height(), size.height(), to.size.height()),
        size.width(), size.height()};
}

// ms; unknown lengths leave the times as they are.
void moveTimes(QVariantMap &mark, int fromMs, int toMs)
{
    const int start = mark.value(MarkKey::startTime).toInt();
    const int end = mark.value(MarkKey::endTime).toInt();
    if (end <= 0 || (fromMs > 0 && start <= 0 && end >= fromMs)) {
        mark[MarkKey::startTime] = 0;
        mark[MarkKey::endTime] = toMs;
    } else if (toMs > 0) {
        const bool lastsToEnd = fromMs > 0 && end >= fromMs;
        const int length = std::max(end - start, 0);
        mark[MarkKey::endTime] = lastsToEnd ? toMs : std::min(end, toMs);
        if (start >= toMs)
            mark[MarkKey::startTime] = std::max(toMs - length, 0);
    }
}

} // namespace

MarkedPicture markedPicture(const MediaInfoData &info)
{
    MarkedPicture picture;
    if (info.video) {
        picture.size = turnedSize(*info.video);
        picture.pixelAspect = turnedPixelAspect(*info.video);
    }
    if (info.format)
        picture.durationMs = int(info.format->duration);
    return picture;
}

QVariantList marksFor(const QVariantList &marks, const MarkedPicture &from, const MarkedPicture &to)
{
    QVariantList placed;
    for (const QVariant &entry : marks) {
        QVariantMap mark = entry.toMap();
        const bool isSame = from.size == to.size && qFuzzyCompare(from.pixelAspect, to.pixelAspect);
        if (!isSame && !from.size.isEmpty() && !to.size.isEmpty())
            mark[MarkKey::rect] = movedRect(mark, from, to);
        moveTimes(mark, from.durationMs, to.durationMs);
        placed += mark;
    }
    return placed;
}
