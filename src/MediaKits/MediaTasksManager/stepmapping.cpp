// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/dubbingmix.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"
#include "MediaKits/MediaTasksManager/picturemap.h"

#include <QDir>
#include <QFileInfo>
#include <QFont>

#include <algorithm>
#include <cmath>

namespace {

const QString rectKey = QStringLiteral("rect");
const QString fontKey = QStringLiteral("font");
const QString startKey = QStringLiteral("startTime");
const QString endKey = QStringLiteral("endTime");

// Too small to be seen, large enough not to count as nothing.
constexpr float leastLook = 0.0001F;
// A size below gives no filter, or the picture's own size.
constexpr int leastSide = 2;
constexpr int secondMs = 1000;

bool hasSize(const QSharedPointer<VEncParam> &video)
{
    return video && video->width >= leastSide && video->height >= leastSide;
}

bool isSwallowed(const VideoBeautyParam &look)
{
    return isNeutral(double(look.contrast)) && isNeutral(double(look.brightness)) &&
           isNeutral(double(look.saturation));
}

QSharedPointer<VideoBeautyParam> mappedLook(const QSharedPointer<VideoBeautyParam> &beauty)
{
    if (!beauty)
        return {};
    const auto look = QSharedPointer<VideoBeautyParam>::create(*beauty);
    if (isSwallowed(*look)) {
        if (look->contrast < leastLook)
            look->contrast = leastLook;
        if (look->saturation < leastLook)
            look->saturation = leastLook;
        if (look->brightness > 1.0F - leastLook)
            look->brightness = 1.0F - leastLook;
    }
    if (look->rotate % 2 != 0)
        std::swap(look->vflip, look->hflip);
    return look;
}

// Fitted into a frame of the crop's own size, one in eleven would have bars, from the rounding of
// its proportions. Encoders want even sides.
void cropAlone(ConvertTaskParam &step)
{
    step.cropRect = QSharedPointer<CropBox>::create(*step.cropRect);
    step.cropRect->width = std::max(step.cropRect->width / 2 * 2, leastSide);
    step.cropRect->height = std::max(step.cropRect->height / 2 * 2, leastSide);
    step.cropsAlone = true;
}

// From the source's time to the result's. Tells whether the overlay is still to be seen.
bool mapInterval(QVariantMap &overlay, const ConvertTaskParam &step)
{
    const int end = overlay.value(endKey).toInt();
    if (end <= 0)
        return true;
    const int origin = step.timeRange && step.timeRange->end > 0 ? step.timeRange->start : 0;
    const double speed =
        step.beauty && !isNeutral(double(step.beauty->speed)) ? double(step.beauty->speed) : 1.0;
    const auto mapped = [&](int ms) { return int(std::max(ms - origin, 0) / speed); };
    overlay[startKey] = mapped(overlay.value(startKey).toInt());
    // The filter counts in whole seconds: the one in which the overlay ends belongs to it.
    overlay[endKey] = (mapped(end) + secondMs - 1) / secondMs * secondMs;
    return end > origin;
}

// The part of a removal inside the picture, of which the filter needs a margin of one pixel.
QRect removalArea(const QRectF &rect, const QSize &picture)
{
    const QRect whole(QPoint(0, 0), picture);
    QRect area = rect.toAlignedRect() & whole;
    if (area.isEmpty())
        return {};
    area.setLeft(std::min(area.left(), whole.right() - leastSide));
    area.setTop(std::min(area.top(), whole.bottom() - leastSide));
    return area;
}

bool isRemoval(const QVariantMap &overlay)
{
    return overlay.value(QStringLiteral("filter")).toString() == QLatin1String("delogo");
}

// Tells whether anything of the overlay lies in the picture.
bool mapPlace(QVariantMap &overlay, const PictureMap &way)
{
    const QRectF rect = overlay.value(rectKey).toRectF();
    if (isRemoval(overlay)) {
        const QRect area = removalArea(way.area(rect), way.size());
        overlay[rectKey] = QRectF(area);
        return !area.isEmpty();
    }
    QRectF place = way.upright(rect);
    place.setSize(place.size().expandedTo(QSizeF(leastSide, leastSide)));
    overlay[rectKey] = place;
    QFont font = overlay.value(fontKey).value<QFont>();
    if (font.pixelSize() > 0) {
        overlay[chosenFontKey] = font;
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * way.heightFactor())));
        overlay[fontKey] = font;
    }
    overlay[frameKey] = way.size();
    return place.intersects(QRectF(QPointF(0, 0), way.size()));
}

// Removals have to be looked at: the filter needs a margin, and something to remove.
bool staysPut(const QVariantMap &overlay, const PictureMap &way)
{
    const QRectF whole(QPointF(0, 0), way.size());
    return way.isIdentity() && !isRemoval(overlay) &&
           whole.contains(overlay.value(rectKey).toRectF());
}

void mapOverlays(ConvertTaskParam &step)
{
    if (step.videoFilters.isEmpty())
        return;
    const PictureMap way(step);
    QVariantList seen;
    for (const QVariant &entry : step.videoFilters) {
        QVariantMap overlay = entry.toMap();
        const bool inTime = mapInterval(overlay, step);
        const bool inPlace = !way.isKnown() || staysPut(overlay, way) || mapPlace(overlay, way);
        if (inTime && inPlace)
            seen += overlay;
    }
    step.videoFilters = seen;
    if (!way.isKnown())
        return;
    step.sourceInfo = QSharedPointer<MediaInfoData>::create(*step.sourceInfo);
    step.sourceInfo->video = QSharedPointer<VEncParam>::create(*step.sourceInfo->video);
    step.sourceInfo->video->width = way.size().width();
    step.sourceInfo->video->height = way.size().height();
    step.sourceInfo->video->rotate = 0.0;
}

// Streams that no graph makes come behind those of graphs, and ffmpeg ends the sound early that
// goes through a graph alone.
bool needsOwnChain(const ConvertTaskParam &step)
{
    // But only apart from each other can one of them end the other.
    return !step.endsWithPicture && step.picture == ResultPicture::AsSource && step.sourceInfo &&
           step.sourceInfo->video &&
           !audioGraphText(step, ConvertTask::outputDuration(step)).isEmpty();
}

// Audio books and some more are sound under suffixes that films have as well.
bool isForSound(const ConvertTaskParam &step)
{
    const bool namesSoundAlone = step.encParam && step.encParam->audio && !step.encParam->video;
    return isAudioFormat(step.format) || namesSoundAlone;
}

void usePalette(ConvertTaskParam &step)
{
    step.palette = GifPalette::Used;
    step.paletteFile = QDir(step.outputDir).filePath(QStringLiteral("palette.png"));
}

// A part between two frames of the source would have none.
void holdFrame(ConvertTaskParam &step)
{
    const auto video = step.sourceInfo ? step.sourceInfo->video : nullptr;
    if (!step.timeRange || !video || video->frameRate <= 0.0)
        return;
    const int frameMs = int(std::ceil(secondMs / video->frameRate));
    if (step.timeRange->end <= 0 || step.timeRange->end - step.timeRange->start >= frameMs)
        return;
    step.timeRange = QSharedPointer<TimeSpan>::create(*step.timeRange);
    TimeSpan &span = *step.timeRange;
    if (step.durationMs > 0)
        span.start = std::clamp(span.start, 0, std::max(step.durationMs - frameMs, 0));
    span.end = span.start + frameMs;
}

} // namespace

ConvertTaskParam paletteStep(const ConvertTaskParam &step)
{
    ConvertTaskParam choice = step;
    const QFileInfo file(step.paletteFile);
    choice.outputDir = file.path();
    choice.outputName = file.completeBaseName();
    choice.format = file.suffix();
    choice.palette = GifPalette::Chosen;
    choice.speed = 0; // is that of video encoders
    return choice;
}

ConvertTaskParam mappedStep(const ConvertTaskParam &param)
{
    ConvertTaskParam step = param;
    mapDubbing(step);
    if (isGifFormat(step.format)) {
        holdFrame(step);
        if (step.palette == GifPalette::Own && !(step.sourceInfo && !step.sourceInfo->video))
            usePalette(step);
    }
    if (isForSound(step)) {
        step.picture = ResultPicture::None;
        return step;
    }
    if (step.picture == ResultPicture::Black)
        step.cropRect.clear();
    if (step.cropRect && !(step.encParam && hasSize(step.encParam->video)))
        cropAlone(step);
    step.turnsFrame = step.beauty && step.beauty->rotate % 2 != 0;
    step.beauty = mappedLook(step.beauty);
    mapOverlays(step);
    if (needsOwnChain(step))
        step.picture = ResultPicture::OwnChain;
    return step;
}
