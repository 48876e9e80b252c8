// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

class StreamGraph;

/// Whether the conversion chooses a GIF's palette, or takes one that was chosen.
bool hasOwnPalette(const ConvertTaskParam &param);

/// Chooses the palette of the picture so far, or brings the picture into it; nothing in all other
/// conversions.
void appendPalette(StreamGraph &graph, const ConvertTaskParam &param);
