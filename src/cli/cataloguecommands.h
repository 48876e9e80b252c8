// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"

/// @return exit code
int listCategories(const CommandLine &line);

/// @return exit code
int listPresets(const CommandLine &line);
