// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/outputwords.h"
#include "ffmpeg/sourcefacts.h"
#include "ffmpeg/streamgraph.h"

namespace ffmpeglauncher {

/// Adds to an output that codes a picture what players of its format need: a pixel format that they
/// show, colours and pixels as they take them, a quality where none is named.
/// @param graph the filter graph that feeds the output; null when no filter may be added
/// @param canConvert whether this ffmpeg can convert colours
void adaptPicture(OutputWords *output, StreamGraph *graph, const SourceFacts &facts,
                  bool canConvert);

} // namespace ffmpeglauncher
