// SPDX-License-Identifier: MIT
#include "ffmpeg/outputwords.h"

#include <algorithm>
#include <cstdlib>

namespace ffmpeglauncher {

namespace {

// Which streams a codec option is for.
enum class CodecTarget { None, All, Sound, Other };

CodecTarget codecTarget(const std::string &option)
{
    if (option == "-acodec")
        return CodecTarget::Sound;
    if (option == "-vcodec")
        return CodecTarget::Other;
    const size_t colon = option.find(':');
    const std::string name = option.substr(0, colon);
    if (name != "-c" && name != "-codec")
        return CodecTarget::None;
    if (colon == std::string::npos || colon + 1 == option.size())
        return CodecTarget::All;
    const char type = option[colon + 1];
    if (type == 'a')
        return CodecTarget::Sound;
    // A stream number or a program may be sound as well.
    return std::string_view("vVsdt").find(type) == std::string_view::npos ? CodecTarget::All
                                                                          : CodecTarget::Other;
}

bool isForPicture(const std::string &option)
{
    return option == "-vcodec" || option.find(":v") != std::string::npos ||
           option.find(":V") != std::string::npos;
}

// Also with the number of a stream behind it.
bool isNamed(const std::string &option, std::string_view name)
{
    if (option.compare(0, name.size(), name) != 0)
        return false;
    return option.find_first_not_of(":0123456789", name.size()) == std::string::npos;
}

} // namespace

OutputWords::OutputWords(std::vector<std::string> *arguments, const CommandOutput &output)
    : m_arguments(arguments), m_output(output), m_path((*arguments)[output.path])
{
}

std::string OutputWords::container() const
{
    std::string container = value("-f");
    if (!container.empty())
        return container;
    const size_t dot = m_path.find_last_of("./");
    if (dot == std::string::npos || m_path[dot] == '/')
        return {};
    container = m_path.substr(dot + 1);
    for (char &c : container)
        c = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    return container;
}

bool OutputWords::hasFlag(std::string_view flag) const
{
    return std::any_of(m_output.flags.begin(), m_output.flags.end(),
                       [&](size_t index) { return (*m_arguments)[index] == flag; });
}

bool OutputWords::has(std::initializer_list<std::string_view> options) const
{
    return std::any_of(options.begin(), options.end(),
                       [this](std::string_view option) { return !value(option).empty(); });
}

std::string OutputWords::value(std::string_view option) const
{
    std::string last;
    for (const CommandOption &given : m_output.options) {
        if (isNamed((*m_arguments)[given.name], option))
            last = (*m_arguments)[given.value];
    }
    return last;
}

std::string OutputWords::namedEncoder(StreamKind kind) const
{
    std::string named;
    for (const CommandOption &option : m_output.options) {
        const std::string &name = (*m_arguments)[option.name];
        const CodecTarget target = codecTarget(name);
        const bool meant = kind == StreamKind::Sound
                               ? target == CodecTarget::Sound
                               : target == CodecTarget::Other && isForPicture(name);
        if (meant || target == CodecTarget::All)
            named = (*m_arguments)[option.value];
    }
    return named;
}

const VideoEncoder *OutputWords::videoEncoder() const
{
    if (hasFlag("-vn"))
        return nullptr;
    const std::string named = namedEncoder(StreamKind::Picture);
    return videoEncoderNamed(named.empty() ? containerNamed(container()).video : named);
}

const AudioEncoder *OutputWords::audioEncoder() const
{
    if (hasFlag("-an"))
        return nullptr;
    const std::string named = namedEncoder(StreamKind::Sound);
    return audioEncoderNamed(named.empty() ? containerNamed(container()).audio : named);
}

PictureSize OutputWords::size() const
{
    const std::string text = value("-s");
    const size_t times = text.find('x');
    if (times == std::string::npos)
        return {};
    return {std::atoi(text.c_str()), std::atoi(text.c_str() + times + 1)};
}

bool OutputWords::replaceEncoder(std::string_view from, std::string_view to)
{
    bool replaced = false;
    for (const CommandOption &option : m_output.options) {
        std::string &value = (*m_arguments)[option.value];
        if (value == from && codecTarget((*m_arguments)[option.name]) != CodecTarget::None) {
            value = to;
            replaced = true;
        }
    }
    return replaced;
}

void OutputWords::setValue(std::string_view option, const std::string &value)
{
    for (const CommandOption &given : m_output.options) {
        if (isNamed((*m_arguments)[given.name], option))
            (*m_arguments)[given.value] = value;
    }
}

void OutputWords::insert(const std::string &option, const std::string &value)
{
    const auto place = m_arguments->begin() + std::ptrdiff_t(m_output.insertAt);
    m_arguments->insert(place, {option, value});
    m_output.options.push_back({m_output.insertAt, m_output.insertAt + 1});
    m_output.insertAt += 2;
}

void OutputWords::insertFlag(const std::string &flag)
{
    m_arguments->insert(m_arguments->begin() + std::ptrdiff_t(m_output.insertAt), flag);
    m_output.flags.push_back(m_output.insertAt++);
}

void OutputWords::insertAll(std::string_view words)
{
    while (!words.empty()) {
        const size_t nameEnd = words.find(' ');
        const size_t valueEnd = std::min(words.find(' ', nameEnd + 1), words.size());
        insert(std::string(words.substr(0, nameEnd)),
               std::string(words.substr(nameEnd + 1, valueEnd - nameEnd - 1)));
        words.remove_prefix(std::min(valueEnd + 1, words.size()));
    }
}

} // namespace ffmpeglauncher
