// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace ffmpeglauncher {

/// What the installed ffmpeg can do.
struct EncoderSupport
{
    bool amr = false; ///< has libopencore_amrnb
};

struct AdaptedCommand
{
    std::vector<std::string> arguments;
    std::vector<std::string> notes; ///< one line for the user a stand-in, without line end
};

/// The command that does with a stock ffmpeg what `arguments` (without the program) asks for:
/// unused output labels of filter graphs go, and an encoder that this ffmpeg lacks or the output's
/// container refuses is stood in for. All else stays byte for byte.
AdaptedCommand adaptCommand(const std::vector<std::string> &arguments,
                            const EncoderSupport &support);

} // namespace ffmpeglauncher
