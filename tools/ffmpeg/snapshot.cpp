// SPDX-License-Identifier: MIT
#include "ffmpeg/snapshot.h"

#include "ffmpeg/colour.h"
#include "ffmpeg/graphtext.h"

#include <algorithm>

namespace ffmpeglauncher {

namespace {

// What ffmpeg's own converter takes for granted, as JPEG does.
const std::string pictureMatrix = "smpte170m";
const std::string wholeColours = "yuv444p";

bool isPicture(const std::string &path)
{
    const std::string suffixes[] = {".png", ".jpg", ".jpeg", ".bmp"};
    std::string end = path.substr(std::min(path.find_last_of("./"), path.size()));
    for (char &c : end)
        c = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    return std::find(std::begin(suffixes), std::end(suffixes), end) != std::end(suffixes);
}

// Odd sizes have halves of the colours' pixels, which the converter refuses.
std::string snapshotFilters(const SourceFacts &facts)
{
    const std::string colours = colourFilters(facts, pictureMatrix, wholeColours);
    const bool isOdd = facts.width % 2 != 0 || facts.height % 2 != 0;
    const bool isRgb = facts.matrix == "gbr";
    if (colours.empty() || (isRgb && !isHighRange(facts)))
        return {};
    return isOdd && !isRgb ? "format=yuv444p10," + colours : colours;
}

// Puts filters in front of all that a graph does with the film's picture, which comes in by name or
// at the only beginning there is.
std::string withFilters(const std::string &graphText, const std::string &filters)
{
    const std::optional<Graph> graph = parseGraph(graphText);
    if (!graph)
        return graphText;
    for (const GraphChain &chain : *graph) {
        for (const GraphLabel &label : chain.front().inputs) {
            if (label.name == "in")
                return "[in]" + filters + "[prepared];" + graphText.substr(0, label.begin) +
                       "[prepared]" + graphText.substr(label.end);
        }
    }
    const bool isPlain = graph->size() == 1 && graph->front().front().inputs.empty();
    return isPlain ? filters + "," + graphText : graphText;
}

} // namespace

void adaptSnapshot(OutputWords *output, const SourceFacts &facts)
{
    const std::string graph = output->value("-vf");
    const std::string filters = snapshotFilters(facts);
    if (isPicture(output->path()) && !graph.empty() && !filters.empty())
        output->setValue("-vf", withFilters(graph, filters));
}

} // namespace ffmpeglauncher
