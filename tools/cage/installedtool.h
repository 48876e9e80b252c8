// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace cage {

/// Path of the tool that a launcher becomes: `builtInPath` if it can be run, else the first `name`
/// in `searchPath` (folders divided by colons). A file that is the same as `selfPath` is never
/// taken, whatever links lead to it. Empty when there is none.
std::string findTool(const std::string &builtInPath, const std::string &name,
                     const std::string &searchPath, const std::string &selfPath);

/// The same for this process and its PATH.
std::string findTool(const std::string &builtInPath);

/// The value of an environment variable; empty without one.
std::string environmentText(const char *name);

} // namespace cage
