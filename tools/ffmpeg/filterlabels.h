// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

namespace ffmpeglauncher {

/// The label that the value of a -map option names, as in "[vrt0]"; empty for a stream specifier.
std::string labelOfMap(const std::string &mapValue);

/// The graph without the output labels that no chain of it takes as input and `mappedLabels`
/// lacks, so that ffmpeg sends those outputs to the first output file by itself.
/// Only labels that end a chain go, and none in front of a used label of the same filter: without
/// it the used label would move to another output of the filter.
/// A text that is no filter graph comes back unchanged.
std::string dropUnusedOutputLabels(const std::string &graph,
                                   const std::set<std::string> &mappedLabels);

} // namespace ffmpeglauncher
