// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QSize>

// How a probed picture stands before its viewer, who sees it turned by its tag and with the
// proportions of its pixels.

/// Whether the picture is shown turned by an odd number of quarter turns.
bool isUpright(const VEncParam &video);

/// The coded pixels, turned as they are shown: what crops, overlays and filters count in.
QSize turnedSize(const VEncParam &video);

/// Width of one of these turned pixels by its height.
double turnedPixelAspect(const VEncParam &video);

/// The size in square pixels of such a part of a picture: one side is stretched, none shrunk.
QSize squarePixelSize(const QSize &size, double pixelAspect);

/// The size in square pixels that the picture is shown with.
QSize shownSize(const VEncParam &video);
