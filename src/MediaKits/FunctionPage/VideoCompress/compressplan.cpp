// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"

#include "MediaKits/FunctionPage/VideoCompress/compresscontainer.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

enum class Encoder { H264, Vp9, Older };

// What ffmpeg makes of a film by its suffix. The least rate of a picture was measured at the
// coarsest quantiser, with the same moving scenes from 320x180 to 1920x1080: some bits a pixel, and
// some a second whatever the size.
struct Container
{
    const char *suffixes;
    double leastBitsPerPixel;
    int leastKbps;
    int bytesBesidePacket; ///< that the container adds to each packet
    bool codesSound;       ///< otherwise it is stored as it is
    Encoder encoder;
};

const Container containers[] = {
    {" mp4 m4v mov f4v mkv 3gp 3g2 ", 0.003, 5, 12, true, Encoder::H264},
    {" webm ", 0.003, 5, 12, true, Encoder::Vp9},
    {" ogv ", 0.01, 5, 12, true, Encoder::Older},
    {" flv swf rm ", 0.055, 60, 17, true, Encoder::Older},
    {" avi ", 0.055, 60, 33, true, Encoder::Older},
    {" wmv asf ", 0.055, 60, 57, true, Encoder::Older},
    {" mpg mpeg ", 0.065, 90, 22, true, Encoder::Older},
    {" vob ", 0.065, 90, 41, true, Encoder::Older},
    {" wtv ", 0.065, 90, 130, true, Encoder::Older},
    {" mxf ", 0.065, 90, 1345, false, Encoder::Older},
};

// Rates that every encoder of these containers takes, also at low sample rates.
const int soundRates[] = {32, 48, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr int usualSoundRate = 128;
constexpr int mostStereoRate = 192;
constexpr int leastMonoRate = 32;
constexpr int leastStereoRate = 64;
// More than this share of a file for its sound, and the picture falls apart.
constexpr double mostSound = 0.4;
constexpr int storedSampleBits = 16;
constexpr int storedSampleKhz = 48;

constexpr int soundPacketsASecond = 43;
constexpr double usualFrameRate = 25.0;
constexpr double unknownSmallestShare = 0.2;
// A film that took few bits is a simple one.
constexpr double simplerThanSource = 0.2;
constexpr double bitsPerKbit = 1000.0;
constexpr double bitsPerByte = 8.0;

const Container &containerOf(const MediaInfoData &info)
{
    const QString suffix =
        info.format ? compressContainer(info.format->formatName).suffix : QString();
    const QString word = QLatin1Char(' ') + suffix + QLatin1Char(' ');
    const auto found =
        std::find_if(std::begin(containers), std::end(containers), [&](const Container &container) {
            return QLatin1String(container.suffixes).contains(word);
        });
    return found != std::end(containers) ? *found : containers[0];
}

// kbit/s of the whole file; 0 when its length isn't known.
double wholeRate(const MediaInfoData &info)
{
    if (!info.format || info.format->duration <= 0)
        return 0.0;
    return double(info.format->fileSize) * bitsPerByte / double(info.format->duration);
}

bool isStereo(const AEncParam &sound)
{
    return sound.channel != 1;
}

int leastSound(const AEncParam &sound)
{
    return isStereo(sound) ? leastStereoRate : leastMonoRate;
}

// The largest rate that is none above the source's own, a good one, and the share of sound.
int soundRate(const AEncParam &sound, double whole)
{
    constexpr int stereo = 2;
    const int own = sound.bitrate > 0 ? sound.bitrate : usualSoundRate;
    const int good = sound.channel > stereo ? own : std::min(own, mostStereoRate);
    const double most = std::min<double>(good, whole * mostSound);
    int chosen = leastSound(sound);
    for (const int rate : soundRates) {
        if (rate > chosen && rate <= most)
            chosen = rate;
    }
    return chosen;
}

int storedSoundRate(const AEncParam &sound)
{
    return std::max(sound.channel, 1) * storedSampleKhz * storedSampleBits;
}

double besidesRate(const MediaInfoData &info, double frameRate)
{
    const double packets = (frameRate > 0 ? frameRate : usualFrameRate) +
                           (info.audios.isEmpty() ? 0 : soundPacketsASecond);
    return packets * containerOf(info).bytesBesidePacket * bitsPerByte / bitsPerKbit;
}

int presumedLeast(const VEncParam &picture, const MediaInfoData &info)
{
    const Container &container = containerOf(info);
    const double frameRate = picture.frameRate > 0 ? picture.frameRate : usualFrameRate;
    const double pixels = double(picture.width) * picture.height * frameRate;
    const int least = int(pixels * container.leastBitsPerPixel / bitsPerKbit) + container.leastKbps;
    // The efficient encoders follow the scene down as far as it goes.
    const int own = pictureBitrate(info);
    return container.encoder != Encoder::Older && own > 0
               ? std::min(least, std::max(1, int(own * simplerThanSource)))
               : least;
}

// What was measured is of the source's own size.
int leastPicture(const VEncParam &picture, const MediaInfoData &info, int measured)
{
    const int presumed = presumedLeast(picture, info);
    if (measured <= 0 || !info.video)
        return presumed;
    return std::max(1, int(measured * double(presumed) / presumedLeast(*info.video, info)));
}

int soundBeside(int coded, const MediaInfoData &info)
{
    if (info.audios.isEmpty())
        return 0;
    return containerOf(info).codesSound ? coded : storedSoundRate(*info.audios.first());
}

qint64 bytesAt(double kbps, const MediaInfoData &info)
{
    return qint64(kbps * double(info.format->duration) / bitsPerByte);
}

} // namespace

int pictureBitrate(const MediaInfoData &info)
{
    if (!info.video || info.video->bitrate > 0 || !info.format)
        return info.video ? info.video->bitrate : 0;
    double rest = info.format->bitrate > 0 ? info.format->bitrate : wholeRate(info);
    for (const auto &audio : info.audios)
        rest -= audio->bitrate;
    return std::max(int(rest), 0);
}

CompressPlan compressPlan(double rate, const MediaInfoData &info, int least)
{
    CompressPlan plan;
    const int own = pictureBitrate(info);
    if (own <= 0)
        return plan;
    const double whole = wholeRate(info) * rate;
    if (whole <= 0) {
        plan.video = int(own * rate);
        return plan;
    }
    if (!info.audios.isEmpty() && containerOf(info).codesSound)
        plan.audio = soundRate(*info.audios.first(), whole);
    const double besides = soundBeside(plan.audio, info) + besidesRate(info, info.video->frameRate);
    const int smallest = leastPicture(*info.video, info, least);
    const int wanted = int(whole - besides);
    plan.video = std::clamp(wanted, smallest, std::max(own, smallest));
    plan.bytes = plan.video == wanted ? qint64(double(info.format->fileSize) * rate)
                                      : bytesAt(plan.video + besides, info);
    return plan;
}

qint64 sizeAtRates(const VEncParam &picture, int audio, const MediaInfoData &info, int least)
{
    if (wholeRate(info) <= 0 || !info.video || picture.bitrate <= 0)
        return -1;
    VEncParam shown = picture;
    if (shown.width <= 0 || shown.height <= 0) {
        shown.width = info.video->width;
        shown.height = info.video->height;
    }
    const int video = std::max(picture.bitrate, leastPicture(shown, info, least));
    const int sound = soundBeside(audio > 0 ? audio : usualSoundRate, info);
    return bytesAt(video + sound + besidesRate(info, picture.frameRate), info);
}

double smallestShare(const MediaInfoData &info, int least)
{
    const double whole = wholeRate(info);
    if (whole <= 0 || !info.video || info.video->width <= 0 || info.video->height <= 0)
        return unknownSmallestShare;
    const int sound = info.audios.isEmpty() ? 0 : leastSound(*info.audios.first());
    const double smallest = leastPicture(*info.video, info, least) + soundBeside(sound, info) +
                            besidesRate(info, info.video->frameRate);
    return std::min(smallest / whole, 1.0);
}

bool leastNeedsTrial(const MediaInfoData &info)
{
    return containerOf(info).encoder == Encoder::Older && wholeRate(info) > 0 && info.video &&
           info.video->width > 0 && info.video->height > 0;
}

bool leastMatters(double rate, const MediaInfoData &info)
{
    // The wildest scenes took six times what is presumed.
    constexpr int wildest = 8;
    return compressPlan(rate, info).video < wildest * presumedLeast(*info.video, info);
}

// The older encoders may miss a rate by a number of bits, which is little of a long film and much
// of a short one.
QStringList rateOptions(int video, const MediaInfoData &info)
{
    constexpr double mayMiss = 0.02;
    constexpr double secondMs = 1000.0;
    constexpr int usualKbit = 4000; // ffmpeg's own
    if (video <= 0 || wholeRate(info) <= 0)
        return {};
    const Encoder encoder = containerOf(info).encoder;
    if (encoder == Encoder::H264)
        return {QStringLiteral("-x264-params"), QStringLiteral("ratetol=0.1")};
    if (encoder == Encoder::Vp9)
        return {};
    const double seconds = double(info.format->duration) / secondMs;
    const int kbit = std::clamp(int(video * seconds * mayMiss), 1, usualKbit);
    return {QStringLiteral("-bt"), QStringLiteral("%1k").arg(std::max(kbit, video / 10))};
}
