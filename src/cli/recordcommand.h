// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"

/// Records the screen until the time is over or the process is asked to end, and prints the file.
/// Recordings that a crash has cut off are made into files before, which standard error tells.
/// @return exit code
int recordScreen(const CommandLine &line);
