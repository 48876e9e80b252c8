// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ffmpeglauncher {

/// Path of the ffmpeg that the launcher becomes: `builtInPath` if it can be run, else the first
/// "ffmpeg" in `searchPath` (folders divided by colons). A file that is the same as `selfPath` is
/// never taken, whatever links lead to it. Empty when there is none.
std::string findRealFfmpeg(const std::string &builtInPath, const std::string &searchPath,
                           const std::string &selfPath);

} // namespace ffmpeglauncher
