// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"

#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"

#include <QtGlobal>

namespace {

constexpr double percent = 100.0;
constexpr double mebibyte = 9.5367431640625e-07; // of a byte

double twoDecimals(double value)
{
    return qRound(value * percent) / percent;
}

} // namespace

QSharedPointer<EncParam> makeEncParam(int parts)
{
    auto made = QSharedPointer<EncParam>::create();
    if (parts & VideoPart)
        made->video = QSharedPointer<VEncParam>::create();
    if (parts & AudioPart)
        made->audio = QSharedPointer<AEncParam>::create();
    return made;
}

int sliderOfRate(double rate)
{
    return qRound((rate - 1.0) * percent);
}

double rateOfSlider(int position)
{
    return position / percent + 1.0;
}

double mebibytes(qint64 bytes)
{
    return double(bytes) * mebibyte;
}

QString sizeRangeText(const QString &format, double whole, double share)
{
    return format.arg(twoDecimals(whole * share)).arg(twoDecimals(whole));
}

QSharedPointer<EncParam> encParamFor(const CompressSettingsParam &settings,
                                     const MediaInfoData &info)
{
    QSharedPointer<EncParam> made = settings.encParam;
    if (!settings.advanced) {
        const CompressPlan plan = compressPlan(settings.rate, info, settings.leastPicture);
        if (plan.video <= 0)
            return nullptr;
        made = makeEncParam(plan.audio > 0 ? VideoPart | AudioPart : VideoPart);
        made->video->bitrate = plan.video;
        if (plan.audio > 0)
            made->audio->bitrate = plan.audio;
    }
    if (made && made->video)
        made->video->rateOptions = rateOptions(made->video->bitrate, info);
    return made;
}

qint64 estimatedSize(const CompressSettingsParam &settings, const MediaInfoData &info)
{
    if (!settings.advanced || !settings.encParam)
        return compressPlan(settings.rate, info, settings.leastPicture).bytes;
    if (!settings.encParam->video)
        return -1;
    const auto audio = settings.encParam->audio;
    return sizeAtRates(*settings.encParam->video, audio ? audio->bitrate : 0, info,
                       settings.leastPicture);
}
