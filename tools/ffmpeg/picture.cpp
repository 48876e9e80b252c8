// SPDX-License-Identifier: MIT
#include "ffmpeg/picture.h"

#include "ffmpeg/colour.h"

#include <algorithm>
#include <cmath>

namespace ffmpeglauncher {

namespace {

// Headers claim up to 1000 frames a second, or 90000. Up to 60 a source of changing rate may have
// for moments; beyond, what the probe has found counts, up to the fastest cameras of phones.
constexpr double usualRate = 60.0;
constexpr double highestRate = 240.0;

// Half of the colours' pixels can't be stored.
constexpr char evenSize[] = "crop=trunc(iw/2)*2:trunc(ih/2)*2:0:0";
constexpr char squarePixels[] = "scale=trunc(iw*sar/2+0.5)*2:ih,setsar=1";
// MPEG-2 tells the shape of the picture, but only these two (a twentieth takes in the pixel aspects
// of ITU-R BT.601, which leave some columns out).
constexpr char mpegShape[] =
    "scale='if(lt(abs(dar-4/3),0.05)+lt(abs(dar-16/9),0.05),iw,trunc(iw*sar/2+0.5)*2)':ih";

std::string rateLimit(double measured)
{
    const double limit = measured > highestRate ? usualRate : std::max(measured, usualRate);
    return std::to_string(int(std::ceil(limit)));
}

// The frames of a picture that was made faster or slower, again at a steady rate: left to the
// encoder's end, ffmpeg shows the last of them a few times too many. Where the source's rate
// changes, the one that it has for most of its frames is more than the average.
std::string steadyRate(const OutputWords &output, const SourceFacts &facts)
{
    if (!output.value("-r").empty())
        return "fps=" + output.value("-r");
    if (facts.frameRate <= 0)
        return {};
    const std::string limit = rateLimit(facts.frameRate);
    const std::string measured =
        facts.frameRate > highestRate ? limit : std::to_string(facts.frameRate);
    return "fps='if(between(source_fps,0.01," + limit + "),source_fps," + measured + ")'";
}

std::string shapeFilters(const OutputWords &output, const std::string &encoder)
{
    if (containerNamed(output.container()).keepsPixelAspect)
        return {};
    return encoder == "mpeg2video" ? mpegShape : squarePixels;
}

std::string joined(const std::string &first, const std::string &second)
{
    return first.empty() || second.empty() ? first + second : first + "," + second;
}

std::string resultMatrix(const SourceFacts &facts, const PictureSize &named,
                         const VideoEncoder &encoder)
{
    const PictureSize shown = facts.turned ? PictureSize{facts.height, facts.width}
                                           : PictureSize{facts.width, facts.height};
    // Parts that are to be joined have a size, and then all of them one matrix.
    if (isHighRange(facts) && encoder.tellsColours && !named.isKnown())
        return "bt709";
    return usualMatrix(named.isKnown() ? named : shown);
}

void addFilters(OutputWords *output, StreamGraph *graph, const SourceFacts &facts,
                const VideoEncoder &encoder, bool canConvert)
{
    const PictureSize named = output->size();
    const std::string even = named.isKnown() ? "" : evenSize;
    const std::string shape = named.isKnown() ? "" : shapeFilters(*output, encoder.name);
    const std::string colours =
        canConvert ? colourFilters(facts, resultMatrix(facts, named, encoder)) : "";
    const std::string begin = joined(even, colours);
    if (!graph->givesPicture()) {
        const std::string all = joined(begin, shape);
        if (!all.empty())
            output->insert("-vf", all);
        return;
    }
    if (!begin.empty())
        graph->addBehindSize(begin);
    const std::string end =
        joined(shape, graph->changesSpeed() ? steadyRate(*output, facts) : std::string());
    if (!end.empty())
        graph->addToPicture(end);
}

} // namespace

void adaptPicture(OutputWords *output, StreamGraph *graph, const SourceFacts &facts,
                  bool canConvert)
{
    const VideoEncoder *encoder = output->videoEncoder();
    if (encoder == nullptr)
        return;
    const bool hasFormat = *encoder->pixelFormat == '\0' || output->has({"-pix_fmt"});
    if (!hasFormat)
        output->insert("-pix_fmt", encoder->pixelFormat);
    if (!output->has({"-b", "-b:v", "-vb", "-q", "-q:v", "-qscale", "-qscale:v", "-crf"}))
        output->insertAll(encoder->quality);
    if (!output->has({"-r", "-fpsmax"}))
        output->insert("-fpsmax", rateLimit(facts.frameRate));
    if (graph != nullptr && !output->has({"-vf", "-filter", "-filter:v"}))
        addFilters(output, graph, facts, *encoder, canConvert);
}

} // namespace ffmpeglauncher
