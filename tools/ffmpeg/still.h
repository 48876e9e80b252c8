// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/outputwords.h"
#include "ffmpeg/sourcefacts.h"
#include "ffmpeg/streamgraph.h"

namespace ffmpeglauncher {

/// A song with a cover that becomes a film: the cover stands still for as long as the sound lasts.
/// ffmpeg by itself takes it for a film of one frame, whose mark as a cover multiplexers refuse.
/// Does nothing for other sources, or where the output or the graph has a picture of its own.
void showCover(OutputWords *output, StreamGraph *graph, const SourceFacts &facts);

} // namespace ffmpeglauncher
