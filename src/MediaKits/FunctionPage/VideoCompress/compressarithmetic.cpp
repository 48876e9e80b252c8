// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"

#include <QtGlobal>

namespace {

constexpr double percent = 100.0;
constexpr double mebibyte = 9.5367431640625e-07; // of a byte
constexpr qint64 bitsPerByte = 8;
// Far below a hundredth, far above the binary error of one.
constexpr double roundingError = 1e-9;

double twoDecimals(double value)
{
    return qRound(value * percent) / percent;
}

int wholeBitrate(const MediaFormatInfo &file)
{
    if (file.bitrate > 0 || file.duration <= 0)
        return file.bitrate;
    // Bits a millisecond are kbits a second.
    return int(file.fileSize * bitsPerByte / file.duration);
}

int videoBitrate(const QSharedPointer<VEncParam> &video)
{
    return video ? video->bitrate : 0;
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
    // 0.8 stands for -20, though in binary it comes out a little nearer to 0: each opening of the
    // page or the dialog would move the slider on.
    return int((rate - 1.0) * percent - roundingError);
}

double rateOfSlider(int position)
{
    return position / percent + 1.0;
}

double mebibytes(qint64 bytes)
{
    return double(bytes) * mebibyte;
}

QString sizeRangeText(const QString &format, double whole)
{
    return format.arg(twoDecimals(whole * smallestRate)).arg(twoDecimals(whole));
}

int pictureBitrate(const MediaInfoData &info)
{
    if (!info.video || info.video->bitrate > 0 || !info.format)
        return videoBitrate(info.video);
    int rest = wholeBitrate(*info.format);
    for (const auto &audio : info.audios)
        rest -= audio->bitrate;
    return qMax(rest, 0);
}

QSharedPointer<EncParam> encParamFor(const CompressSettingsParam &settings,
                                     const MediaInfoData &info)
{
    if (settings.advanced)
        return settings.encParam;
    const int bitrate = int(pictureBitrate(info) * settings.rate);
    if (bitrate <= 0)
        return nullptr;
    auto made = makeEncParam(VideoPart);
    made->video->bitrate = bitrate;
    return made;
}

qint64 estimatedSize(const CompressSettingsParam &settings, const MediaInfoData &info)
{
    const int source = videoBitrate(info.video);
    if (source <= 0 || !info.format)
        return -1;
    const double share = settings.advanced && settings.encParam
                             ? double(videoBitrate(settings.encParam->video)) / double(source)
                             : settings.rate;
    return qint64(double(info.format->fileSize) * share);
}
