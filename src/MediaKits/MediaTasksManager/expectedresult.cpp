// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/expectedresult.h"

#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// The filters' texts round a speed to two decimals.
constexpr int speedSlackPermille = 10;

QString tr(const char *text)
{
    return QCoreApplication::translate("ExpectedResult", text);
}

// Containers and encoders for which any rate and channel count can be had. Elsewhere the tool may
// choose what the format allows.
bool keepsSoundShape(const QString &format)
{
    static const QStringList formats{QStringLiteral("mp3"),  QStringLiteral("wav"),
                                     QStringLiteral("flac"), QStringLiteral("m4a"),
                                     QStringLiteral("aac"),  QStringLiteral("ape"),
                                     QStringLiteral("mp4"),  QStringLiteral("mkv")};
    return formats.contains(format.toLower());
}

bool holdsSound(const QString &format)
{
    return format.compare(QLatin1String("gif"), Qt::CaseInsensitive) != 0;
}

bool hasTimeRange(const ConvertTaskParam &param)
{
    return param.timeRange && param.timeRange->end > 0;
}

double speedOf(const ConvertTaskParam &param)
{
    const double speed = param.beauty ? double(param.beauty->speed) : 1.0;
    return isNeutral(speed) ? 1.0 : speed;
}

// Only a dubbing with music makes a sound where the source has none.
bool bringsSound(const QVariant &entry)
{
    const QVariantMap dubbing = entry.toMap();
    return dubbing.value(QStringLiteral("filter")).toString() == QLatin1String("dubbing") &&
           !dubbing.value(QStringLiteral("musics")).toList().isEmpty();
}

// Where something that ends at a time of the source ends in the result; 0 for an unknown time.
qint64 endInResult(const ConvertTaskParam &param, qint64 sourceMs)
{
    if (sourceMs <= 0)
        return 0;
    qint64 lengthMs = sourceMs;
    if (hasTimeRange(param)) {
        const qint64 end = std::min<qint64>(param.timeRange->end, sourceMs);
        lengthMs = std::max<qint64>(end - param.timeRange->start, 0);
    }
    return qint64(double(lengthMs) / speedOf(param));
}

// Length of that part of the source that goes into the result.
qint64 usedMs(const ExpectedResult &expected, const MediaInfoData &source)
{
    const MediaContent &content = source.content;
    const bool knowsPicture = !expected.hasPicture || content.pictureEndMs > 0;
    const bool knowsSound = !expected.hasSound || content.soundEndMs > 0;
    if (knowsPicture && knowsSound) {
        return std::max(expected.hasPicture ? content.pictureEndMs : 0,
                        expected.hasSound ? content.soundEndMs : 0);
    }
    // Of several sounds one goes into the result, and another may be the longest part.
    const bool isAllUsed = expected.hasPicture == !source.video.isNull() &&
                           expected.hasSound == !source.audios.isEmpty() &&
                           source.audios.size() <= 1;
    return isAllUsed ? content.toldMs : 0;
}

void expectTimes(ExpectedResult &expected, const ConvertTaskParam &param)
{
    const MediaContent &content = param.sourceInfo->content;
    expected.isSourceCutOff = content.isCutOff && !hasTimeRange(param);
    if (content.toldMs <= 0)
        return;
    expected.sourceMs = content.toldMs;
    expected.lengthMs = endInResult(param, usedMs(expected, *param.sourceInfo));
    // Alone, a stream begins with its first frame, whenever that was to come.
    if (expected.hasPicture && expected.hasSound) {
        expected.pictureEndMs = endInResult(param, content.pictureEndMs);
        if (param.audioFilters.isEmpty())
            expected.soundEndMs = endInResult(param, content.soundEndMs);
    }
    const bool isSpeedy = std::abs(speedOf(param) - 1.0) > 0.0;
    if (isSpeedy)
        expected.slackPermille = speedSlackPermille;
    expected.measure = isSpeedy ? tr("预期") : hasTimeRange(param) ? tr("所选片段") : tr("源文件");
}

} // namespace

ExpectedResult expectedResult(const ConvertTaskParam &param)
{
    ExpectedResult expected;
    if (!param.sourceInfo)
        return expected;
    const EncParam preset = param.encParam ? *param.encParam : EncParam();
    const bool isShown = param.picture == ResultPicture::Black ||
                         (param.picture != ResultPicture::None && param.sourceInfo->video);
    const bool isForSound = preset.audio && !preset.video;
    expected.hasPicture = isShown && !isForSound && !isAudioFormat(param.format);
    expected.hasSound =
        holdsSound(param.format) &&
        (!param.sourceInfo->audios.isEmpty() ||
         std::any_of(param.audioFilters.begin(), param.audioFilters.end(), bringsSound));
    if (expected.hasPicture && preset.video)
        expected.pictureSize = QSize(preset.video->width / 2 * 2, preset.video->height / 2 * 2);
    if (expected.hasSound && preset.audio && keepsSoundShape(param.format)) {
        expected.sampleRate = preset.audio->sampleRate;
        expected.channels = preset.audio->channel;
    }
    expectTimes(expected, param);
    return expected;
}

ExpectedResult confirmed(ExpectedResult expected, const FFmpegAccount &account)
{
    constexpr qint64 roundingMs = 1000;
    constexpr qint64 roundingShare = 50;
    const qint64 difference = std::abs(expected.sourceMs - account.inputMs);
    const bool isConfirmed =
        difference <= std::max(roundingMs, expected.sourceMs / roundingShare) ||
        expected.isSourceCutOff || account.inputCutOff;
    if (!isConfirmed) {
        expected.lengthMs = 0;
        expected.pictureEndMs = 0;
        expected.soundEndMs = 0;
    }
    return expected;
}
