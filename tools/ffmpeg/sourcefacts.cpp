// SPDX-License-Identifier: MIT
#include "ffmpeg/sourcefacts.h"

#include <cstdlib>

namespace ffmpeglauncher {

namespace {

// A name goes into a filter's options, where other characters would mean something.
std::string plainName(const std::string &text)
{
    const bool plain =
        text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_") == std::string::npos;
    return plain ? text : std::string();
}

void takeFact(SourceFacts *facts, const std::string &key, const std::string &value)
{
    if (key == "size") {
        facts->width = std::atoi(value.c_str());
        const size_t times = value.find('x');
        facts->height = times == std::string::npos ? 0 : std::atoi(value.c_str() + times + 1);
    } else if (key == "rate") {
        facts->frameRate = std::strtod(value.c_str(), nullptr);
    } else if (key == "transfer") {
        facts->transfer = plainName(value);
    } else if (key == "primaries") {
        facts->primaries = plainName(value);
    } else if (key == "matrix") {
        facts->matrix = plainName(value);
    } else if (key == "turned") {
        facts->turned = value == "1";
    } else if (key == "cover") {
        facts->coverLost = value == "lost";
        facts->cover = value == "1" || facts->coverLost;
    }
}

} // namespace

SourceFacts parseSourceFacts(const std::string &text)
{
    SourceFacts facts;
    size_t begin = 0;
    while (begin < text.size()) {
        const size_t end = std::min(text.find(';', begin), text.size());
        const std::string fact = text.substr(begin, end - begin);
        const size_t equals = fact.find('=');
        if (equals != std::string::npos)
            takeFact(&facts, fact.substr(0, equals), fact.substr(equals + 1));
        begin = end + 1;
    }
    return facts;
}

} // namespace ffmpeglauncher
