// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace ffmpeglauncher {

/// An option with a value; both fields are indices of the argument list.
struct CommandOption
{
    size_t name = 0;
    size_t value = 0;
};

/// One output file with the options that ffmpeg applies to it.
struct CommandOutput
{
    size_t path = 0;                    ///< index of the path
    size_t insertAt = 0;                ///< index where a further option of this output may go
    std::vector<CommandOption> options; ///< with value, in order
    std::vector<size_t> flags;          ///< indices of the options without value
};

/// What an ffmpeg command consists of.
struct CommandLine
{
    std::vector<CommandOption> options; ///< all options with value
    std::vector<CommandOutput> outputs;
};

/// Divides an argument list (without the program) the way ffmpeg does: every word that begins with
/// a dash is an option, "-i FILE" closes an input, a word that is no option's value is an output.
CommandLine parseCommandLine(const std::vector<std::string> &arguments);

} // namespace ffmpeglauncher
