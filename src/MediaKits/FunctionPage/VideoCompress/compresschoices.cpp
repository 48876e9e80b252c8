// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compresschoices.h"

#include "MediaKits/MediaInfo/shownpicture.h"

#include <QCoreApplication>
#include <QSize>

namespace {

const QVector<QSize> fixedResolutions = {
    {240, 160},  {320, 240},  {480, 320},  {640, 360},   {640, 480},   {640, 480},
    {720, 480},  {768, 576},  {750, 1334}, {800, 480},   {854, 480},   {960, 540},
    {1024, 600}, {1024, 600}, {1280, 720}, {1920, 1080}, {2704, 1520},
};
const QVector<int> fixedVideoBitrates = {76, 153, 230, 384, 512, 768, 900, 1000, 1200, 1500};
const QVector<double> fixedFrameRates = {12, 15, 20, 23.97, 24, 25, 25.97, 30, 50, 59.94, 60};
const QVector<int> fixedAudioBitrates = {72, 96, 128, 192, 256, 320};
const QVector<int> fixedSampleRates = {22050, 32000, 44100, 4800};

QString automatic()
{
    return QCoreApplication::translate("CompressChoices", "自动");
}

bool isKnown(double value)
{
    return value > 0;
}

bool isKnown(const QSize &size)
{
    return !size.isEmpty();
}

template<class Value, class Text>
QVector<CompressChoice> choices(QVector<Value> fixed, const Value &own, Text text)
{
    const QString ownText =
        isKnown(own) ? QStringLiteral("%1 (%2)").arg(text(own), automatic()) : automatic();
    fixed.removeAll(own);
    QVector<CompressChoice> all{{ownText, QVariant::fromValue(own)}};
    for (const Value &value : fixed)
        all += {text(value), QVariant::fromValue(value)};
    return all;
}

QString kbpsText(int value)
{
    return QStringLiteral("%1 kbps").arg(value);
}

} // namespace

QVector<CompressChoice> CompressChoices::resolutions(const VEncParam &source)
{
    return choices(fixedResolutions, turnedSize(source), [](const QSize &value) {
        return QStringLiteral("%1x%2").arg(value.width()).arg(value.height());
    });
}

QVector<CompressChoice> CompressChoices::videoBitrates(int own)
{
    return choices(fixedVideoBitrates, own, kbpsText);
}

QVector<CompressChoice> CompressChoices::frameRates(double own)
{
    return choices(fixedFrameRates, own,
                   [](double value) { return QStringLiteral("%1 fps").arg(value); });
}

QVector<CompressChoice> CompressChoices::audioBitrates(int own)
{
    return choices(fixedAudioBitrates, own, kbpsText);
}

QVector<CompressChoice> CompressChoices::sampleRates(int own)
{
    return choices(fixedSampleRates, own,
                   [](int value) { return QStringLiteral("%1 Hz").arg(value); });
}
