// SPDX-License-Identifier: MIT
#include "ffmpeg/graphtext.h"

#include <set>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view whitespace = " \n\t\r";
constexpr std::string_view nameEnd = "=,;[";
constexpr std::string_view optionsEnd = "[],;";
constexpr std::string_view scalerFlags = "sws_flags=";

class GraphReader
{
public:
    explicit GraphReader(std::string_view text) : m_text(text) {}

    std::optional<Graph> read();
    std::string token(std::string_view terminators);
    size_t position() const { return m_pos; }

private:
    void skipWhitespace();
    bool skipScalerFlags();
    bool readLabels(std::vector<GraphLabel> *labels);
    bool readFilter(GraphFilter *filter);
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

bool GraphReader::readLabels(std::vector<GraphLabel> *labels)
{
    while (peek() == '[') {
        GraphLabel label;
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

bool GraphReader::readFilter(GraphFilter *filter)
{
    skipWhitespace();
    if (!readLabels(&filter->inputs))
        return false;
    filter->name = token(nameEnd);
    if (filter->name.empty())
        return false;
    if (peek() == '=') {
        ++m_pos;
        filter->options = token(optionsEnd);
    }
    filter->end = m_pos;
    if (!readLabels(&filter->outputs))
        return false;
    skipWhitespace();
    return true;
}

std::optional<Graph> GraphReader::read()
{
    Graph graph(1);
    if (!skipScalerFlags())
        return std::nullopt;
    while (true) {
        GraphFilter filter;
        if (!readFilter(&filter))
            return std::nullopt;
        graph.back().push_back(filter);
        if (m_pos == m_text.size())
            return graph;
        if (peek() == ';')
            graph.emplace_back();
        else if (peek() != ',')
            return std::nullopt;
        ++m_pos;
    }
}

} // namespace

std::optional<Graph> parseGraph(std::string_view text)
{
    return GraphReader(text).read();
}

std::string graphToken(std::string_view text, std::string_view terminators, size_t *end)
{
    GraphReader reader(text);
    std::string token = reader.token(terminators);
    if (end != nullptr)
        *end = reader.position();
    return token;
}

std::vector<GraphLabel> openLabels(const Graph &graph)
{
    std::set<std::string> taken;
    for (const GraphChain &chain : graph) {
        for (const GraphFilter &filter : chain) {
            for (const GraphLabel &label : filter.inputs)
                taken.insert(label.name);
        }
    }
    std::vector<GraphLabel> open;
    for (const GraphChain &chain : graph) {
        for (const GraphLabel &label : chain.back().outputs) {
            if (taken.count(label.name) == 0)
                open.push_back(label);
        }
    }
    return open;
}

} // namespace ffmpeglauncher
