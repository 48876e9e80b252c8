// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/outputwords.h"
#include "ffmpeg/streamgraph.h"

namespace ffmpeglauncher {

/// Brings the sound of an output into channels and a sample rate that its encoder takes, the
/// nearest to those of the source, unless the command names them.
/// @param graph the filter graph that feeds the output; null when no filter may be added
void adaptSound(OutputWords *output, StreamGraph *graph);

} // namespace ffmpeglauncher
