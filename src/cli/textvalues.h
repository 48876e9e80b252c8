// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"
#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QSize>
#include <QVector>

#include <optional>

/// An end that no film reaches. In seconds, the command's six digits tell it without an exponent.
constexpr int behindAnyEndMs = 999'999'000;

// Values that a user types on the command line; nothing comes back for text that isn't one.

/// Seconds ("12", "12.5") or "hh:mm:ss" with up to three decimals.
/// @return ms
std::optional<int> parseTimeMs(const QString &text);

/// Such times, separated by commas; at least one.
std::optional<QVector<int>> parseTimesMs(const QString &text);

/// "X,Y,W,H" in picture pixels; the box must not be empty.
std::optional<CropBox> parseCropBox(const QString &text);

/// "WxH" in pixels, each side as a GIF's on its page.
std::optional<QSize> parseGifSize(const QString &text);

/// A factor on the picture's size, from 0 to 5; 0 leaves the size.
std::optional<double> parseScale(const QString &text);

/// "png", "jpg" or "bmp", in lower case.
std::optional<QString> parsePictureFormat(const QString &text);

/// "key=value,…" over a neutral record. Keys: contrast, brightness, saturation, red, green, blue,
/// rotate, volume, speed, reverse, vflip, hflip; the last three take 0 or 1.
/// "filter" takes the name of a ready-made look, whose settings later keys may change.
std::optional<VideoBeautyParam> parseBeauty(const QString &text);

/// The names of the ready-made looks that may be chosen.
QStringList readyLookNames();

/// The number of a window, decimal or with "0x" in front; never 0.
std::optional<quint32> parseWindow(const QString &text);

/// "none", "system", "mic" or "all".
/// @return bit 0 for what is played, bit 1 for microphones
std::optional<int> parseSound(const QString &text);
