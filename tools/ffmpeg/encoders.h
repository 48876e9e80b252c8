// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ffmpeglauncher {

/// What ffmpeg takes for a container where a command names no encoder.
struct Container
{
    const char *name = "";  ///< suffix in lower case
    const char *video = ""; ///< encoder; empty when unknown
    const char *audio = "";
    bool keepsPixelAspect = false; ///< and players heed it
};

/// What a picture encoder needs for a result that players of its format show.
struct VideoEncoder
{
    const char *name = "";
    const char *pixelFormat = ""; ///< empty for ffmpeg's choice
    const char *quality = "";     ///< options where the command names neither rate nor quality
    bool tellsColours = false;    ///< its stream says which matrix its numbers are made by
    int stillRate = 10;           ///< frames a second of a picture that stands still
};

/// What a sound encoder takes without harm, as values of the filter "aformat"; empty when it sees
/// to that itself.
struct AudioEncoder
{
    const char *name = "";
    const char *layouts = "";
    const char *sampleRates = "";
};

/// One without a name when it is unknown.
const Container &containerNamed(const std::string &name);
/// Null for an encoder that needs nothing.
const VideoEncoder *videoEncoderNamed(const std::string &name);
const AudioEncoder *audioEncoderNamed(const std::string &name);

} // namespace ffmpeglauncher
