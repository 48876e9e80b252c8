// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/outputwords.h"
#include "ffmpeg/sourcefacts.h"

#include <string>

namespace ffmpeglauncher {

/// The matrix that players take for a picture that doesn't tell its own.
std::string usualMatrix(const PictureSize &size);

/// Whether the source's brightness goes beyond that of a usual screen (PQ or HLG).
bool isHighRange(const SourceFacts &facts);

/// Filters, joined by commas, that make a usual picture of 8 bits with that matrix and limited
/// range of the source's; empty where nothing has to be done or the source is unknown.
/// @param pixelFormat of the result
std::string colourFilters(const SourceFacts &facts, const std::string &matrix,
                          const std::string &pixelFormat = "yuv420p");

} // namespace ffmpeglauncher
