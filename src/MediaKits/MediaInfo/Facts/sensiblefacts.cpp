// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/Facts/sensiblefacts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr double highestRate = 1e6; // frames a second
constexpr double msPerSecond = 1000.0;

// kbit/s; as bit/s they fit into an int, and no film has as many.
constexpr int highestBitrate = 2000000;

template<class Number>
void limit(Number &number, int most = largest)
{
    number = number < 0 || number > most ? 0 : number;
}

void limitPicture(VEncParam &video)
{
    limit(video.width);
    limit(video.height);
    limit(video.bitrate, highestBitrate);
    const double pixels = double(video.width) * video.height;
    if (pixels > largest) {
        video.width = 0;
        video.height = 0;
    }
    const double stretch = std::max(video.pixelAspect, 1.0 / video.pixelAspect);
    // Also false for what is no number. A side grows by half a pixel when it is rounded.
    const bool isUsual =
        video.pixelAspect > 0 &&
        (pixels + video.width + video.height) * stretch + video.width + video.height < largest;
    if (!isUsual)
        video.pixelAspect = 1.0;
    if (!(video.frameRate >= 0 && video.frameRate <= highestRate))
        video.frameRate = 0.0;
    if (!std::isfinite(video.rotate))
        video.rotate = 0.0;
}

} // namespace

void keepSensible(MediaInfoData &info)
{
    MediaContent &content = info.content;
    for (qint64 *ms : {&content.toldMs, &content.pictureEndMs, &content.soundEndMs})
        limit(*ms);
    if (info.format) {
        limit(info.format->duration);
        limit(info.format->bitrate, highestBitrate);
        limit(info.format->streamCount);
        info.format->fileSize = std::max<qint64>(info.format->fileSize, 0);
    }
    if (info.video)
        limitPicture(*info.video);
    for (const auto &audio : qAsConst(info.audios)) {
        limit(audio->channel);
        limit(audio->sampleRate);
        limit(audio->bitrate, highestBitrate);
    }
}

qint64 sensibleMs(double seconds)
{
    const double ms = seconds * msPerSecond;
    return ms >= 0 && ms <= largest ? qint64(ms) : 0;
}
