// SPDX-License-Identifier: MIT
#include "ffmpeg/filterlabels.h"

#include <optional>
#include <string_view>
#include <vector>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view whitespace = " \n\t\r";
constexpr std::string_view nameEnd = "=,;[";
constexpr std::string_view optionsEnd = "[],;";
constexpr std::string_view scalerFlags = "sws_flags=";

struct Label
{
    std::string name;
    size_t begin = 0; // of "["
    size_t end = 0;   // behind "]"
};

using Labels = std::vector<Label>;

struct Graph
{
    std::set<std::string> inputs;
    std::vector<Labels> chainOutputs; // one entry a chain: the labels behind its last filter
};

// Reads graph text by the rules of libavfilter's own parser, quotes and escapes included.
class GraphReader
{
public:
    explicit GraphReader(std::string_view text) : m_text(text) {}

    // Nothing when the text is no filter graph.
    std::optional<Graph> read();

    std::string token(std::string_view terminators);

private:
    void skipWhitespace();
    bool skipScalerFlags();
    bool readLabels(Labels *labels);
    bool readFilter(Labels *inputs, Labels *outputs);
    char peek() const { return m_pos < m_text.size() ? m_text[m_pos] : '\0'; }

    std::string_view m_text;
    size_t m_pos = 0;
};

void GraphReader::skipWhitespace()
{
    const size_t next = m_text.find_first_not_of(whitespace, m_pos);
    m_pos = next == std::string_view::npos ? m_text.size() : next;
}

std::string GraphReader::token(std::string_view terminators)
{
    std::string result;
    size_t kept = 0; // quoted and escaped characters are no trailing whitespace
    skipWhitespace();
    while (m_pos < m_text.size() && terminators.find(m_text[m_pos]) == std::string_view::npos) {
        const char c = m_text[m_pos++];
        if (c == '\\' && m_pos < m_text.size()) {
            result += m_text[m_pos++];
            kept = result.size();
        } else if (c == '\'') {
            const size_t close = m_text.find('\'', m_pos);
            result += m_text.substr(m_pos, close - m_pos);
            kept = close == std::string_view::npos ? kept : result.size();
            m_pos = close == std::string_view::npos ? m_text.size() : close + 1;
        } else {
            result += c;
        }
    }
    while (result.size() > kept && whitespace.find(result.back()) != std::string_view::npos)
        result.pop_back();
    return result;
}

bool GraphReader::skipScalerFlags()
{
    if (m_text.substr(0, scalerFlags.size()) != scalerFlags)
        return true;
    const size_t end = m_text.find(';');
    if (end == std::string_view::npos)
        return false;
    m_pos = end + 1;
    return true;
}

bool GraphReader::readLabels(Labels *labels)
{
    while (peek() == '[') {
        Label label;
        label.begin = m_pos++;
        label.name = token("]");
        if (label.name.empty() || peek() != ']')
            return false;
        label.end = ++m_pos;
        labels->push_back(label);
        skipWhitespace();
    }
    return true;
}

bool GraphReader::readFilter(Labels *inputs, Labels *outputs)
{
    skipWhitespace();
    if (!readLabels(inputs))
        return false;
    if (token(nameEnd).empty())
        return false;
    if (peek() == '=') {
        ++m_pos;
        token(optionsEnd);
    }
    if (!readLabels(outputs))
        return false;
    skipWhitespace();
    return true;
}

std::optional<Graph> GraphReader::read()
{
    Graph graph;
    if (!skipScalerFlags())
        return std::nullopt;
    while (true) {
        Labels inputs;
        Labels outputs;
        if (!readFilter(&inputs, &outputs))
            return std::nullopt;
        for (const Label &label : inputs)
            graph.inputs.insert(label.name);
        const bool atEnd = m_pos == m_text.size();
        if (atEnd || peek() == ';')
            graph.chainOutputs.push_back(outputs);
        if (atEnd)
            return graph;
        if (peek() != ';' && peek() != ',')
            return std::nullopt;
        ++m_pos;
    }
}

} // namespace

std::string labelOfMap(const std::string &mapValue)
{
    const size_t start = mapValue.compare(0, 1, "-") == 0 ? 1 : 0;
    if (mapValue.size() <= start || mapValue[start] != '[')
        return {};
    return GraphReader(std::string_view(mapValue).substr(start + 1)).token("]");
}

std::string dropUnusedOutputLabels(const std::string &graph,
                                   const std::set<std::string> &mappedLabels)
{
    const std::optional<Graph> parsed = GraphReader(graph).read();
    if (!parsed)
        return graph;
    std::string result = graph;
    for (auto chain = parsed->chainOutputs.rbegin(); chain != parsed->chainOutputs.rend();
         ++chain) {
        for (auto label = chain->rbegin(); label != chain->rend(); ++label) {
            if (parsed->inputs.count(label->name) != 0 || mappedLabels.count(label->name) != 0)
                break;
            result.erase(label->begin, label->end - label->begin);
        }
    }
    return result;
}

} // namespace ffmpeglauncher
