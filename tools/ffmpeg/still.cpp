// SPDX-License-Identifier: MIT
#include "ffmpeg/still.h"

#include "ffmpeg/colour.h"

#include <cmath>
#include <cstdlib>

namespace ffmpeglauncher {

namespace {

constexpr int secondsBetweenKeyFrames = 5;
// Covers are of any size, players expect films of this one at most. Smaller covers are enlarged, so
// that all have the colours of a large film.
constexpr PictureSize largest{1920, 1080};

// The clock draws one small frame for each that the film is to have out of the song's sound, and so
// ends with it, whatever the header says about its length. Its ten columns divide the samples of a
// frame evenly at all usual rates. Aresample takes any sound, where aformat would have the song's
// own brought into the clock's form as well.
std::string clockChain(const std::string &rate)
{
    return "[tick]aresample=osr=48000:ocl=mono:osf=s16,showwaves=s=10x10:r=" + rate +
           ":colors=black,format=yuv420p[clock]";
}

std::string fitted(const PictureSize &frame)
{
    return "scale=" + std::to_string(frame.width) + ":" + std::to_string(frame.height) +
           ":force_original_aspect_ratio=decrease:force_divisible_by=2,setsar=1";
}

std::string padded(const PictureSize &frame)
{
    return fitted(frame) + ",pad=" + std::to_string(frame.width) + ":" +
           std::to_string(frame.height) + ":(ow-iw)/2:(oh-ih)/2:black";
}

// In place of a cover that can't be decoded.
constexpr PictureSize blank{1280, 720};

std::string blackChains(const PictureSize &frame, const std::string &rate)
{
    const PictureSize size = frame.isKnown() ? frame : blank;
    return clockChain(rate) + ";[clock]scale=" + std::to_string(size.width) + ":" +
           std::to_string(size.height) +
           ",setsar=1,setparams=range=tv:colorspace=" + usualMatrix(size) + "[vrtcover]";
}

std::string stillChains(const PictureSize &frame, const std::string &rate)
{
    const std::string matrix = usualMatrix(frame.isKnown() ? frame : largest);
    return clockChain(rate) + ";[0:v]" + (frame.isKnown() ? padded(frame) : fitted(largest)) +
           ",format=rgb24,scale=out_color_matrix=" + matrix +
           ":out_range=tv,format=yuv420p[cover];[clock][cover]scale2ref[ground][art];"
           "[ground][art]overlay,setsar=1,setparams=range=tv:colorspace=" +
           matrix + "[vrtcover]";
}

} // namespace

void showCover(OutputWords *output, StreamGraph *graph, const SourceFacts &facts)
{
    const VideoEncoder *encoder = output->videoEncoder();
    if (!facts.cover || graph == nullptr || graph->givesPicture() || encoder == nullptr)
        return;
    std::string rate = output->value("-r");
    if (rate.empty())
        rate = std::to_string(encoder->stillRate);
    if (!graph->givesSound())
        graph->prepend("[0:a]anull[artsong]");
    graph->addToSound("asplit[tick]");
    graph->prepend(facts.coverLost ? blackChains(output->size(), rate)
                                   : stillChains(output->size(), rate));
    if (!output->size().isKnown() && !output->has({"-g"}))
        output->insert("-g", std::to_string(std::lround(secondsBetweenKeyFrames *
                                                        std::strtod(rate.c_str(), nullptr))));
}

} // namespace ffmpeglauncher
