// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ffmpeglauncher {

/// A label of a filter graph's text; positions are offsets into the text.
struct GraphLabel
{
    std::string name;
    size_t begin = 0; ///< of "["
    size_t end = 0;   ///< behind "]"
};

/// One filter with the labels around it.
struct GraphFilter
{
    std::string name;
    std::string options; ///< behind "=", read once: their own quotes and escapes still stand
    std::vector<GraphLabel> inputs;
    std::vector<GraphLabel> outputs;
    size_t end = 0; ///< behind the filter's options, where its outputs begin
};

using GraphChain = std::vector<GraphFilter>;
using Graph = std::vector<GraphChain>;

/// Reads graph text by the rules of libavfilter's own parser, quotes and escapes included.
/// Nothing when the text is no filter graph.
std::optional<Graph> parseGraph(std::string_view text);

/// The first word of `text` by the same rules, up to one of `terminators`.
/// @param end where it ends, if that is wanted
std::string graphToken(std::string_view text, std::string_view terminators, size_t *end = nullptr);

/// The labels behind the last filter of a chain that no filter of the graph takes, in order: each
/// becomes a stream of the output file.
std::vector<GraphLabel> openLabels(const Graph &graph);

} // namespace ffmpeglauncher
