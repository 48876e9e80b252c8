// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/dubbingmix.h"

#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"

#include <algorithm>

namespace {

const QString musicsKey = QStringLiteral("musics");
const QString startKey = QStringLiteral("startTime");
const QString skipKey = QStringLiteral("skip");
const QString fadeAtKey = QStringLiteral("fadeAt");
const QString fadeKey = QStringLiteral("fade");

constexpr int secondMs = 1000;
constexpr int longestFadeMs = 2000;
// A short film keeps most of its music as it is.
constexpr int fadeShare = 40;
// Music isn't brought below that for a film whose sound has less.
constexpr int leastSampleRate = 44100;

bool isDubbing(const QVariantMap &entry)
{
    return entry.value(QStringLiteral("filter")).toString() == QLatin1String("dubbing");
}

double speedOf(const ConvertTaskParam &param)
{
    return param.beauty && !isNeutral(double(param.beauty->speed)) ? double(param.beauty->speed)
                                                                   : 1.0;
}

bool isCut(const ConvertTaskParam &param)
{
    return param.timeRange && param.timeRange->end > 0;
}

// Music goes with the picture, which a container's length may be longer than; 0 when unknown.
int filmMs(const ConvertTaskParam &param)
{
    const qint64 pictureMs = param.sourceInfo ? param.sourceInfo->content.pictureEndMs : 0;
    return pictureMs > 0 ? int(pictureMs) : param.durationMs;
}

// The part of the source's time that is used; an end of 0 for one that isn't known.
TimeSpan usedSpan(const ConvertTaskParam &param)
{
    const int endMs = filmMs(param);
    if (!isCut(param))
        return {0, endMs};
    return {param.timeRange->start, endMs > 0 ? std::min(param.timeRange->end, endMs) : 0};
}

// What the sounds are brought to: none of them may make the others smaller.
void shapeMix(SoundMix &mix, const ConvertTaskParam &step)
{
    if (!step.sourceInfo || step.sourceInfo->audios.isEmpty())
        return;
    const AEncParam &sound = *step.sourceInfo->audios.first();
    mix.channels = std::max(sound.channel, mix.channels);
    if (sound.sampleRate > 0)
        mix.sampleRate = std::max(sound.sampleRate, leastSampleRate);
}

// Music that goes on behind the end fades out there, unless its fade is told already.
void addFade(QVariantMap &music, int startMs, int endMs)
{
    const int ownMs = music.value(QStringLiteral("duration")).toInt();
    const bool endsBefore = ownMs > 0 && startMs + ownMs <= endMs;
    if (endMs <= 0 || endsBefore || music.contains(fadeKey))
        return;
    const int fadeMs = std::min(longestFadeMs, endMs / fadeShare);
    music[fadeAtKey] = endMs - fadeMs;
    music[fadeKey] = fadeMs;
}

// From the source's time to the result's.
// @return whether anything of it is heard
bool mapMusic(QVariantMap &music, const TimeSpan &used, double speed)
{
    const int startMs = int((music.value(startKey).toInt() - used.start) / speed);
    const int endMs = int((used.end - used.start) / speed);
    const int ownMs = music.value(QStringLiteral("duration")).toInt();
    const int skipMs = std::max(-startMs, 0);
    if (music.contains(fadeAtKey))
        music[fadeAtKey] = music.value(fadeAtKey).toInt() - used.start;
    else
        addFade(music, startMs, endMs);
    music[startKey] = std::max(startMs, 0);
    music[skipKey] = skipMs;
    return (used.end <= 0 || startMs < endMs) && (ownMs <= 0 || skipMs < ownMs);
}

template<class Change>
void changeMusics(ConvertTaskParam &param, Change change)
{
    for (QVariant &entry : param.audioFilters) {
        QVariantMap dubbing = entry.toMap();
        if (!isDubbing(dubbing))
            continue;
        QVariantList heard;
        for (const QVariant &given : dubbing.value(musicsKey).toList()) {
            QVariantMap music = given.toMap();
            if (change(music))
                heard += music;
        }
        dubbing[musicsKey] = heard;
        entry = dubbing;
    }
}

} // namespace

QStringList musicFiles(const ConvertTaskParam &param)
{
    QStringList files;
    for (const QVariant &entry : param.audioFilters) {
        const QVariantMap dubbing = entry.toMap();
        if (!isDubbing(dubbing))
            continue;
        for (const QVariant &music : dubbing.value(musicsKey).toList())
            files += music.toMap().value(QStringLiteral("filePath")).toString();
    }
    files.removeDuplicates();
    return files;
}

bool hasMusic(const ConvertTaskParam &param)
{
    return !musicFiles(param).isEmpty();
}

void mapDubbing(ConvertTaskParam &step)
{
    const auto isOne = [](const QVariant &entry) { return isDubbing(entry.toMap()); };
    if (!std::any_of(step.audioFilters.cbegin(), step.audioFilters.cend(), isOne))
        return;
    const TimeSpan used = usedSpan(step);
    const double speed = speedOf(step);
    changeMusics(step, [&](QVariantMap &music) { return mapMusic(music, used, speed); });
    SoundMix mix;
    if (used.end > 0)
        mix.lengthMs = int((used.end - used.start) / speed);
    shapeMix(mix, step);
    const bool isSilent = step.sourceInfo && step.sourceInfo->audios.isEmpty();
    step.soundMix = QSharedPointer<SoundMix>::create(mix);
    step.endsWithPicture =
        isSilent && mix.lengthMs <= 0 && hasMusic(step) && !isAudioFormat(step.format);
}

ConvertTaskParam dubbingExcerpt(const ConvertTaskParam &param, int fromMs, int lengthMs)
{
    ConvertTaskParam excerpt = param;
    excerpt.format = QStringLiteral("wav");
    excerpt.encParam.clear();
    excerpt.videoFilters.clear();
    excerpt.cropRect.clear();
    // Where the whole fades, which the excerpt doesn't see.
    changeMusics(excerpt, [&param](QVariantMap &music) {
        addFade(music, music.value(startKey).toInt(), filmMs(param));
        if (!music.contains(fadeKey))
            music[fadeKey] = 0;
        return true;
    });
    // Whole seconds, which the command tells exactly; early enough to hold a fade as a whole.
    const int filmEnd = filmMs(param);
    const int latest = filmEnd > 0 ? std::max(filmEnd - lengthMs, 0) : fromMs;
    const int start = std::min(fromMs, latest) / secondMs * secondMs;
    const int longest = start + lengthMs + secondMs;
    const int end = filmEnd > 0 ? std::min(longest, filmEnd) : longest;
    excerpt.timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{start, end});
    return excerpt;
}
