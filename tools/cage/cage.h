// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace cage {

/// What a tool may do that it needs no permission of ours for: read the system's own files, its
/// fonts and libraries. All else has to be named.
struct Needs
{
    /// The only one that may be started; empty for none, in a process that goes on itself. Of one
    /// that isn't the system's own, no file is confined.
    std::string program;
    std::vector<std::string> readable; ///< files, or folders with all below
    std::vector<std::string> writable; ///< folders with all below
    bool anyFile = false;              ///< files aren't confined at all
    bool localSockets = false;         ///< those of this machine, as of the display and the sound
};

/// Confines this process and all that it becomes or starts, for good: no network, no program but
/// the named one, no file but the named ones. What doesn't exist is left out. Uses Landlock for
/// files and programs, and a seccomp filter for sockets and for other processes' memory; takes
/// about a tenth of a millisecond.
/// @return what the kernel can't do, in words for a log; empty when all is confined
std::string confine(const Needs &needs);

} // namespace cage
