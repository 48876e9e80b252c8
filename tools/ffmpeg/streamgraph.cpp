// SPDX-License-Identifier: MIT
#include "ffmpeg/streamgraph.h"

#include <algorithm>
#include <set>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view sourcePicture = "0:v";
constexpr std::string_view picturePrefix = "vrt";
constexpr std::string_view soundPrefix = "art";

bool begins(const GraphLabel &label, std::string_view prefix)
{
    return label.name.compare(0, prefix.size(), prefix) == 0;
}

bool fitsPicture(const GraphFilter &filter)
{
    const std::string_view names[] = {"fps", "crop", "scale", "setsar", "pad"};
    return std::find(std::begin(names), std::end(names), filter.name) != std::end(names);
}

} // namespace

StreamGraph::StreamGraph(const std::string &text)
{
    setText(text);
}

void StreamGraph::setText(const std::string &text)
{
    const std::optional<Graph> graph = text.empty() ? Graph() : parseGraph(text);
    m_text = text;
    m_readable = graph.has_value();
    m_graph = graph.value_or(Graph());
}

GraphLabel StreamGraph::pictureEnd() const
{
    for (const GraphLabel &label : openLabels(m_graph)) {
        if (begins(label, picturePrefix))
            return label;
    }
    return {};
}

// A filter that gives both gives the picture first, and may name both alike.
GraphLabel StreamGraph::soundEnd() const
{
    const GraphLabel picture = pictureEnd();
    for (const GraphLabel &label : openLabels(m_graph)) {
        const bool second = begins(label, picturePrefix) && label.begin != picture.begin;
        if (second || begins(label, soundPrefix))
            return label;
    }
    return {};
}

bool StreamGraph::changesSpeed() const
{
    const auto setsTimes = [](const GraphFilter &filter) { return filter.name == "setpts"; };
    return std::any_of(m_graph.begin(), m_graph.end(), [&](const GraphChain &chain) {
        return std::any_of(chain.begin(), chain.end(), setsTimes);
    });
}

void StreamGraph::addBehindSize(const std::string &filters)
{
    for (const GraphChain &chain : m_graph) {
        const std::vector<GraphLabel> &inputs = chain.front().inputs;
        const auto source = std::find_if(inputs.begin(), inputs.end(), [](const GraphLabel &label) {
            return label.name == sourcePicture;
        });
        if (source == inputs.end())
            continue;
        const auto next = std::find_if_not(chain.begin(), chain.end(), fitsPicture);
        std::string text = m_text;
        if (next != chain.begin()) {
            text.insert(std::prev(next)->end, "," + filters);
        } else {
            text.replace(source->begin, source->end - source->begin, "[prepared]");
            text.insert(0, "[0:v]" + filters + "[prepared];");
        }
        setText(text);
        return;
    }
}

// Nothing can be added where a filter gives several streams: the first would go on.
void StreamGraph::addBefore(const GraphLabel &end, const std::string &filters)
{
    std::set<size_t> open;
    for (const GraphLabel &label : openLabels(m_graph))
        open.insert(label.begin);
    for (const GraphChain &chain : m_graph) {
        const std::vector<GraphLabel> &outputs = chain.back().outputs;
        const auto isOpen = [&open](const GraphLabel &label) {
            return open.count(label.begin) != 0;
        };
        if (outputs.empty() || outputs.back().begin != end.begin ||
            std::count_if(outputs.begin(), outputs.end(), isOpen) > 1)
            continue;
        std::string text = m_text;
        text.insert(end.begin, "," + filters);
        setText(text);
        return;
    }
}

void StreamGraph::addToPicture(const std::string &filters)
{
    if (givesPicture())
        addBefore(pictureEnd(), filters);
}

void StreamGraph::addToSound(const std::string &filters)
{
    if (givesSound())
        addBefore(soundEnd(), filters);
}

void StreamGraph::prepend(const std::string &chains)
{
    setText(m_text.empty() ? chains : chains + ";" + m_text);
}

} // namespace ffmpeglauncher
