// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/sourcefacts.h"

#include <string>
#include <vector>

namespace ffmpeglauncher {

/// What the installed ffmpeg can do.
struct InstalledFfmpeg
{
    bool amr = false;    ///< has the encoder libopencore_amrnb
    bool zscale = false; ///< has the filter that converts colours
};

struct AdaptedCommand
{
    std::vector<std::string> arguments;
    std::vector<std::string> notes; ///< one line for the user a stand-in, without line end
};

/// The command that does with a stock ffmpeg what `arguments` (without the program) asks for, and
/// whose result players show: unused output labels of filter graphs go; an encoder that this ffmpeg
/// lacks or the output's container refuses is stood in for; what a result needs beyond what the
/// command says is added to each output that codes. All else stays byte for byte.
/// @param facts of the source, empty where nothing is known
AdaptedCommand adaptCommand(const std::vector<std::string> &arguments,
                            const InstalledFfmpeg &ffmpeg, const SourceFacts &facts = {});

} // namespace ffmpeglauncher
