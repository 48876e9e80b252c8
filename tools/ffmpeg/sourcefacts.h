// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ffmpeglauncher {

/// The environment variable in which the program tells what its probe found out about the source.
constexpr char sourceVariable[] = "MORVANE_SOURCE";

/// What a probe knows of a source. Names are ffmpeg's own; empty and 0 stand for unknown.
struct SourceFacts
{
    int width = 0; ///< of the picture as it is stored, pixels
    int height = 0;
    bool turned = false; ///< it is shown turned by an odd number of quarter turns
    double frameRate = 0.0;
    std::string transfer;
    std::string primaries;
    std::string matrix;     ///< "gbr" for red, green and blue
    bool cover = false;     ///< no film, but a picture that belongs to a song
    bool coverLost = false; ///< which can't be decoded
};

/// Reads "size=1920x1080;turned=1;rate=29.97;transfer=smpte2084;primaries=bt2020;matrix=bt2020nc;
/// cover=1" (or "cover=lost"), in any order; what is missing, unknown or no such value is passed
/// over.
SourceFacts parseSourceFacts(const std::string &text);

} // namespace ffmpeglauncher
