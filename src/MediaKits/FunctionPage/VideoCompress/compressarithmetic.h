// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoCompress/compresssettingsparam.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

/// Records that `makeEncParam` adds, to be summed.
enum EncParamPart { VideoPart = 1, AudioPart = 2 };

/// A preset without a name that asks for nothing, not even a codec: the tool picks those of the
/// container.
QSharedPointer<EncParam> makeEncParam(int parts);

/// Limits of the share of a source's size that the slider can choose.
constexpr double smallestRate = 0.2;
constexpr double wholeRate = 1.0;

/// Slider positions tell by how many percent the size changes, from -80 to 0.
int sliderOfRate(double rate);
double rateOfSlider(int position);

double mebibytes(qint64 bytes);
/// @param format with %1 and %2 for the smallest and the largest size
/// @param whole of the source, in MiB
/// @param share that the smallest size has of it
QString sizeRangeText(const QString &format, double whole, double share = smallestRate);

/// What the conversion is told; null when the source can't be compressed by rate.
QSharedPointer<EncParam> encParamFor(const CompressSettingsParam &settings,
                                     const MediaInfoData &info);

/// Size of the result in bytes; -1 when it can't be told.
qint64 estimatedSize(const CompressSettingsParam &settings, const MediaInfoData &info);
