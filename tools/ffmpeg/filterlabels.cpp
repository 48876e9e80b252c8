// SPDX-License-Identifier: MIT
#include "ffmpeg/filterlabels.h"

#include "ffmpeg/graphtext.h"

namespace ffmpeglauncher {

std::string labelOfMap(const std::string &mapValue)
{
    const size_t start = mapValue.compare(0, 1, "-") == 0 ? 1 : 0;
    if (mapValue.size() <= start || mapValue[start] != '[')
        return {};
    return graphToken(std::string_view(mapValue).substr(start + 1), "]");
}

std::string dropUnusedOutputLabels(const std::string &graph,
                                   const std::set<std::string> &mappedLabels)
{
    const std::optional<Graph> parsed = parseGraph(graph);
    if (!parsed)
        return graph;
    std::set<size_t> unused; // where they begin
    for (const GraphLabel &label : openLabels(*parsed)) {
        if (mappedLabels.count(label.name) == 0)
            unused.insert(label.begin);
    }
    std::string result = graph;
    for (auto chain = parsed->rbegin(); chain != parsed->rend(); ++chain) {
        const std::vector<GraphLabel> &labels = chain->back().outputs;
        for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
            if (unused.count(label->begin) == 0)
                break;
            result.erase(label->begin, label->end - label->begin);
        }
    }
    return result;
}

} // namespace ffmpeglauncher
