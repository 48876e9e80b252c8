// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mergepreset.h"

#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaInfo/shownpicture.h"

#include <algorithm>

namespace {

// Where no part tells.
constexpr QSize usualSize(1280, 720);
constexpr int leastSide = 2;
constexpr double usualFrameRate = 25.0;
// Headers that claim more tell the unit of their times.
constexpr double highestFrameRate = 240.0;
constexpr int stereo = 2;
constexpr int discRate = 44100;
constexpr int filmRate = 48000;

using Part = QSharedPointer<InputFileMediaParam>;

QSharedPointer<EncParam> copyOf(const QSharedPointer<EncParam> &preset)
{
    return preset ? QSharedPointer<EncParam>::create(*preset) : QSharedPointer<EncParam>::create();
}

QSharedPointer<EncParam> sizedPreset(const QSharedPointer<EncParam> &preset, const QSize &size)
{
    const auto sized = copyOf(preset);
    sized->video = sized->video ? QSharedPointer<VEncParam>::create(*sized->video)
                                : QSharedPointer<VEncParam>::create();
    sized->video->width = size.width();
    sized->video->height = size.height();
    return sized;
}

QSharedPointer<VEncParam> pictureOf(const Part &part)
{
    const auto video = part->sourceInfo ? part->sourceInfo->video : nullptr;
    return video && video->width > 0 && video->height > 0 ? video : nullptr;
}

double firstFrameRate(const QList<Part> &parts)
{
    for (const Part &part : parts) {
        const auto video = pictureOf(part);
        if (video && video->frameRate >= 1.0 && video->frameRate <= highestFrameRate)
            return video->frameRate;
    }
    return usualFrameRate;
}

// Null when the parts' sounds are alike, so that the encoder makes the same of each. Otherwise what
// all encoders take: of the usual rates, Flash's containers have one and Opus the other.
QSharedPointer<AEncParam> commonSound(const ConcatTaskParam &param)
{
    QVector<AEncParam> sounds;
    for (const Part &part : param.files) {
        const bool hasSound = part->sourceInfo && !part->sourceInfo->audios.isEmpty();
        sounds += hasSound ? *part->sourceInfo->audios.first() : AEncParam();
    }
    const bool alike = std::all_of(sounds.begin(), sounds.end(), [&](const AEncParam &sound) {
        return sound.sampleRate == sounds.first().sampleRate &&
               sound.channel == sounds.first().channel;
    });
    if (alike)
        return {};
    const bool isFlash = param.format.compare(QLatin1String("flv"), Qt::CaseInsensitive) == 0 ||
                         param.format.compare(QLatin1String("swf"), Qt::CaseInsensitive) == 0;
    const auto common = QSharedPointer<AEncParam>::create();
    common->sampleRate = isFlash ? discRate : filmRate;
    common->channel = stereo;
    return common;
}

} // namespace

QSize firstPictureSize(const QList<Part> &parts)
{
    for (const Part &part : parts) {
        const auto video = pictureOf(part);
        if (!video)
            continue;
        const QSize shown =
            part->cropRect ? squarePixelSize(QSize(part->cropRect->width, part->cropRect->height),
                                             turnedPixelAspect(*video))
                           : shownSize(*video);
        return {std::max(shown.width() / 2 * 2, leastSide),
                std::max(shown.height() / 2 * 2, leastSide)};
    }
    return {};
}

bool mergeHasPicture(const ConcatTaskParam &param)
{
    return !isAudioFormat(param.format) &&
           std::any_of(param.files.begin(), param.files.end(), [](const Part &part) {
               return !part->sourceInfo || part->sourceInfo->video || part->sourceInfo->hasCover;
           });
}

bool mergeHasSound(const ConcatTaskParam &param)
{
    const bool isMute = param.encParam && param.encParam->video && !param.encParam->audio;
    return !isMute && std::any_of(param.files.begin(), param.files.end(), [](const Part &part) {
        return !part->sourceInfo || !part->sourceInfo->audios.isEmpty();
    });
}

QSharedPointer<EncParam> mergePreset(const ConcatTaskParam &param)
{
    auto preset = param.encParam;
    if (mergeHasPicture(param)) {
        const auto video = preset ? preset->video : nullptr;
        QSize size = video ? QSize(video->width, video->height) : QSize();
        if (size.isEmpty())
            size = firstPictureSize(param.files);
        preset = sizedPreset(preset, size.isEmpty() ? usualSize : size);
        if (preset->video->frameRate <= 0.0)
            preset->video->frameRate = firstFrameRate(param.files);
    }
    if (mergeHasSound(param) && !(preset && preset->audio)) {
        preset = copyOf(preset);
        preset->audio = commonSound(param);
    }
    return preset;
}
