// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

/// Takes out what no file can have, though a damaged header may claim it: all numbers are finite
/// and none is negative; a length in ms, the pixels of a picture and those that are shown of it fit
/// into an int. What doesn't counts as not known.
void keepSensible(MediaInfoData &info);

/// A length in seconds that a reader tells, in ms; within the same limits.
qint64 sensibleMs(double seconds);
