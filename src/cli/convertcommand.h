// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"
#include "cli/jobrunner.h"

class QFileInfo;

/// What a result is called unless it gets a name.
QString resultBaseName(const QFileInfo &source);

/// One conversion for each file of the command line.
/// @param owner owns the readers that probe the files
std::vector<CliJob> convertJobs(const CommandLine &line, QObject *owner);

/// The one job that merges all files of the command line.
std::vector<CliJob> mergeJobs(const CommandLine &line, QObject *owner);

/// Prints, for each file, the argument text of the convert step, ahead of it that of the step that
/// chooses its palette where there is one, and runs nothing.
/// @param done called with the exit code, maybe before this returns
void printDryRun(const CommandLine &line, QObject *owner, const std::function<void(int)> &done);
