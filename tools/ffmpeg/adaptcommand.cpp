// SPDX-License-Identifier: MIT
#include "ffmpeg/adaptcommand.h"

#include "ffmpeg/commandline.h"
#include "ffmpeg/filterlabels.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view amrEncoder = "libopencore_amrnb";
constexpr std::string_view h264Encoder = "libx264";

// Which streams a codec option is for.
enum class CodecTarget { None, All, Audio, Other };

CodecTarget codecTarget(const std::string &option)
{
    if (option == "-acodec")
        return CodecTarget::Audio;
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
        return CodecTarget::Audio;
    // A stream number or a program may be sound as well.
    return std::string_view("vVsdt").find(type) == std::string_view::npos ? CodecTarget::All
                                                                          : CodecTarget::Other;
}

// The muxer's name as -f gives it, else the suffix in lower case.
std::string containerOf(const std::vector<std::string> &arguments, const CommandOutput &output)
{
    std::string container;
    for (const CommandOption &option : output.options) {
        if (arguments[option.name] == "-f")
            container = arguments[option.value];
    }
    if (!container.empty())
        return container;
    const std::string &path = arguments[output.path];
    const size_t dot = path.find_last_of("./");
    if (dot == std::string::npos || path[dot] == '/')
        return {};
    container = path.substr(dot + 1);
    for (char &c : container)
        c = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    return container;
}

bool replaceEncoder(std::vector<std::string> *arguments, const CommandOutput &output,
                    std::string_view from, std::string_view to)
{
    bool replaced = false;
    for (const CommandOption &option : output.options) {
        std::string &value = (*arguments)[option.value];
        if (value == from && codecTarget((*arguments)[option.name]) != CodecTarget::None) {
            value = to;
            replaced = true;
        }
    }
    return replaced;
}

bool hasFlag(const std::vector<std::string> &arguments, const CommandOutput &output,
             std::string_view flag)
{
    return std::any_of(output.flags.begin(), output.flags.end(),
                       [&](size_t index) { return arguments[index] == flag; });
}

// The encoder chosen for the sound, "copy" included; empty when ffmpeg is to choose.
std::string audioCodec(const std::vector<std::string> &arguments, const CommandOutput &output)
{
    std::string codec;
    for (const CommandOption &option : output.options) {
        const CodecTarget target = codecTarget(arguments[option.name]);
        if (target == CodecTarget::All || target == CodecTarget::Audio)
            codec = arguments[option.value];
    }
    return codec;
}

bool hasSampleRate(const std::vector<std::string> &arguments, const CommandOutput &output)
{
    return std::any_of(output.options.begin(), output.options.end(),
                       [&](const CommandOption &option) {
                           const std::string &name = arguments[option.name];
                           return name == "-ar" || name.compare(0, 4, "-ar:") == 0;
                       });
}

void insertOption(std::vector<std::string> *arguments, const CommandOutput &output,
                  const std::string &name, const std::string &value)
{
    const auto place = arguments->begin() + std::ptrdiff_t(output.insertAt);
    arguments->insert(place, {name, value});
}

// AMR is both what presets name and what the 3GP muxer has as its default.
void standInForAmr(AdaptedCommand *command, const CommandOutput &output)
{
    std::vector<std::string> &arguments = command->arguments;
    const std::string path = arguments[output.path];
    if (!replaceEncoder(&arguments, output, amrEncoder, "aac")) {
        if (hasFlag(arguments, output, "-an") || !audioCodec(arguments, output).empty())
            return;
        insertOption(&arguments, output, "-c:a", "aac");
    }
    command->notes.push_back("this ffmpeg has no AMR encoder, the sound is coded as AAC: " + path);
}

// SWF holds no H.264, and sound of 44100, 22050 or 11025 Hz only, which a source rarely has.
void standInForSwf(AdaptedCommand *command, const CommandOutput &output)
{
    std::vector<std::string> &arguments = command->arguments;
    const std::string path = arguments[output.path];
    if (replaceEncoder(&arguments, output, h264Encoder, "flv"))
        command->notes.push_back("SWF takes no H.264, the picture is coded as FLV1: " + path);
    if (audioCodec(arguments, output) == "copy") {
        // Pictures that come from SWF never count as key frames, in front of which nothing is
        // copied.
        arguments.insert(arguments.begin() + std::ptrdiff_t(output.insertAt), "-copyinkf");
        return;
    }
    if (hasSampleRate(arguments, output) || hasFlag(arguments, output, "-an"))
        return;
    insertOption(&arguments, output, "-ar", "44100");
    command->notes.push_back("SWF takes few sample rates, any sound gets 44100 Hz: " + path);
}

void dropLabels(std::vector<std::string> *arguments, const CommandLine &command)
{
    std::set<std::string> mapped;
    for (const CommandOption &option : command.options) {
        if ((*arguments)[option.name] == "-map")
            mapped.insert(labelOfMap((*arguments)[option.value]));
    }
    for (const CommandOption &option : command.options) {
        const std::string &name = (*arguments)[option.name];
        if (name == "-filter_complex" || name == "-lavfi")
            (*arguments)[option.value] = dropUnusedOutputLabels((*arguments)[option.value], mapped);
    }
}

} // namespace

AdaptedCommand adaptCommand(const std::vector<std::string> &arguments,
                            const EncoderSupport &support)
{
    AdaptedCommand adapted;
    adapted.arguments = arguments;
    const CommandLine command = parseCommandLine(arguments);
    dropLabels(&adapted.arguments, command);
    // From the back, so that an inserted option moves no index that is still needed.
    for (auto output = command.outputs.rbegin(); output != command.outputs.rend(); ++output) {
        const std::string container = containerOf(arguments, *output);
        if (container == "swf")
            standInForSwf(&adapted, *output);
        else if (container == "3gp" && !support.amr)
            standInForAmr(&adapted, *output);
    }
    return adapted;
}

} // namespace ffmpeglauncher
