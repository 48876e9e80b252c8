// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QPixmap>
#include <QSize>
#include <QString>

/// Icon of a category, 32 x 38.
QPixmap categoryPixmap(const VADisplayCategory &category);

/// Icon of every preset, 24 x 24.
QPixmap presetPixmap();

/// The line below a preset's name: the picture's size in pixels for video, else the bitrate of the
/// sound in kbit/s.
/// @param zeroSizeShown whether a video record without a size reads "0*0" and not as the source's
/// @param openSize the source's size, if known
QString presetDetailText(const EncParam &preset, bool zeroSizeShown, const QSize &openSize = {});
