// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"
#include "cli/jobrunner.h"

/// One job for each file of the command line, which takes the pictures of its moments.
/// @param owner owns the readers that probe the files
std::vector<CliJob> shotJobs(const CommandLine &line, QObject *owner);
