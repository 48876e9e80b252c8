// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoWatermark/markplacing.h"

class MarkSet;
class QKeyEvent;

// What keys do to the current one of the marks.

/// Moves it by an arrow key, and with Ctrl makes it larger or smaller: one pixel of the picture,
/// with Shift ten. False for other keys.
bool moveMark(MarkSet &marks, const QKeyEvent &event);

/// Keeps a copy of it, for other videos too.
/// @param picture that it lies on
void copyMark(const MarkSet &marks, const MarkedPicture &picture);

/// Adds the copy that was kept, placed on this picture, beside the place that it was copied from
/// and inside the picture.
void pasteMark(MarkSet &marks, const MarkedPicture &picture);
