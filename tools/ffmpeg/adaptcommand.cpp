// SPDX-License-Identifier: MIT
#include "ffmpeg/adaptcommand.h"

#include "ffmpeg/colour.h"
#include "ffmpeg/filterlabels.h"
#include "ffmpeg/outputwords.h"
#include "ffmpeg/picture.h"
#include "ffmpeg/snapshot.h"
#include "ffmpeg/sound.h"
#include "ffmpeg/still.h"

#include <algorithm>
#include <set>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view amrEncoder = "libopencore_amrnb";
constexpr std::string_view h264Encoder = "libx264";
constexpr std::string_view mp3Encoder = "libmp3lame";

bool isGraphOption(const std::string &option)
{
    return option == "-filter_complex" || option == "-lavfi";
}

// One command on its way to what a stock ffmpeg takes.
class Adapter
{
public:
    Adapter(AdaptedCommand *command, const InstalledFfmpeg &ffmpeg, const SourceFacts &facts)
        : m_arguments(command->arguments), m_notes(command->notes), m_ffmpeg(ffmpeg), m_facts(facts)
    {
    }

    void adapt();

private:
    void adaptOutput(const CommandOutput &place, bool isFirst);
    void standInForH263(OutputWords &output);
    void standInForAmr(OutputWords &output);
    void standInForFlash(OutputWords &output, const std::string &container);
    void adaptStreams(OutputWords &output, bool isFirst);
    using Gives = bool (StreamGraph::*)() const;
    // Index of the text of the graph that gives such a stream, or else of any; 0 when there is
    // none.
    size_t graphPlace(Gives gives) const;
    template<class Change>
    void changeGraph(OutputWords &output, bool isFirst, Gives gives, Change change);
    void dropLabels();
    void note(const std::string &text, const OutputWords &output)
    {
        m_notes.push_back(text + ": " + output.path());
    }

    std::vector<std::string> &m_arguments;
    std::vector<std::string> &m_notes;
    const InstalledFfmpeg &m_ffmpeg;
    const SourceFacts &m_facts;
    bool m_choosesStreams = false; // the command says itself which streams go where
};

void Adapter::adapt()
{
    const CommandLine command = parseCommandLine(m_arguments);
    m_choosesStreams = std::any_of(
        command.options.begin(), command.options.end(),
        [this](const CommandOption &option) { return m_arguments[option.name] == "-map"; });
    // From the back, so that an inserted option moves no index that is still needed.
    for (size_t i = command.outputs.size(); i > 0; --i)
        adaptOutput(command.outputs[i - 1], i == 1);
    dropLabels();
}

void Adapter::adaptOutput(const CommandOutput &place, bool isFirst)
{
    OutputWords output(&m_arguments, place);
    const std::string container = output.container();
    // An audio book, for which ffmpeg takes a picture as well.
    if (container == "m4b" && !output.hasFlag("-vn") &&
        output.namedEncoder(StreamKind::Picture).empty())
        output.insertFlag("-vn");
    if (container == "swf" || container == "flv")
        standInForFlash(output, container);
    if (container == "3gp" || container == "3g2") {
        standInForH263(output);
        standInForAmr(output);
    }
    adaptStreams(output, isFirst);
}

// ffmpeg's own choice, which takes five sizes of picture only.
void Adapter::standInForH263(OutputWords &output)
{
    if (output.hasFlag("-vn") || !output.namedEncoder(StreamKind::Picture).empty())
        return;
    output.insert("-c:v", std::string(h264Encoder));
    note("H.263 takes few sizes, the picture is coded as H.264", output);
}

// AMR is both what presets name and what the 3GP muxer has as its default.
void Adapter::standInForAmr(OutputWords &output)
{
    if (m_ffmpeg.amr)
        return;
    if (!output.replaceEncoder(amrEncoder, "aac")) {
        if (output.hasFlag("-an") || !output.namedEncoder(StreamKind::Sound).empty())
            return;
        output.insert("-c:a", "aac");
    }
    note("this ffmpeg has no AMR encoder, the sound is coded as AAC", output);
}

// SWF holds no H.264, and in both forms of Flash MP3 has one of three sample rates.
void Adapter::standInForFlash(OutputWords &output, const std::string &container)
{
    if (container == "swf" && output.replaceEncoder(h264Encoder, "flv"))
        note("SWF takes no H.264, the picture is coded as FLV1", output);
    const std::string encoder = output.namedEncoder(StreamKind::Sound);
    // Pictures that come from SWF never count as key frames, in front of which nothing is copied.
    if (container == "swf" && encoder == "copy")
        output.insertFlag("-copyinkf");
    if (output.hasFlag("-an") || (!encoder.empty() && encoder != mp3Encoder))
        return;
    const std::string rate = output.value("-ar");
    if (rate == "44100" || rate == "22050" || rate == "11025")
        return;
    if (rate.empty())
        output.insert("-ar", "44100");
    else
        output.setValue("-ar", "44100");
    note("Flash takes few sample rates, any sound gets 44100 Hz", output);
}

void Adapter::adaptStreams(OutputWords &output, bool isFirst)
{
    changeGraph(output, isFirst, &StreamGraph::givesPicture, [&](StreamGraph *feeding) {
        showCover(&output, feeding, m_facts);
        adaptPicture(&output, feeding, m_facts, m_ffmpeg.zscale);
        if (m_ffmpeg.zscale && feeding != nullptr && isHighRange(m_facts) &&
            output.videoEncoder() != nullptr)
            note("the picture's high dynamic range is mapped to BT.709", output);
    });
    changeGraph(output, isFirst, &StreamGraph::givesSound,
                [&](StreamGraph *feeding) { adaptSound(&output, feeding); });
    if (m_ffmpeg.zscale)
        adaptSnapshot(&output, m_facts);
}

// Hands the change null where no graph may be changed.
template<class Change>
void Adapter::changeGraph(OutputWords &output, bool isFirst, Gives gives, Change change)
{
    // What a graph gives goes to the first output.
    const size_t place = graphPlace(gives);
    const std::string given = isFirst && place != 0 ? m_arguments[place] : std::string();
    StreamGraph graph(given);
    change(graph.isReadable() && !m_choosesStreams ? &graph : nullptr);
    if (graph.text() == given)
        return;
    if (given.empty())
        output.insert("-filter_complex", graph.text());
    else
        m_arguments[graphPlace(gives)] = graph.text();
}

size_t Adapter::graphPlace(Gives gives) const
{
    size_t place = 0;
    for (const CommandOption &option : parseCommandLine(m_arguments).options) {
        if (!isGraphOption(m_arguments[option.name]))
            continue;
        if (place == 0 || (StreamGraph(m_arguments[option.value]).*gives)())
            place = option.value;
    }
    return place;
}

void Adapter::dropLabels()
{
    const CommandLine command = parseCommandLine(m_arguments);
    std::set<std::string> mapped;
    for (const CommandOption &option : command.options) {
        if (m_arguments[option.name] == "-map")
            mapped.insert(labelOfMap(m_arguments[option.value]));
    }
    for (const CommandOption &option : command.options) {
        std::string &value = m_arguments[option.value];
        if (isGraphOption(m_arguments[option.name]))
            value = dropUnusedOutputLabels(value, mapped);
    }
}

} // namespace

AdaptedCommand adaptCommand(const std::vector<std::string> &arguments,
                            const InstalledFfmpeg &ffmpeg, const SourceFacts &facts)
{
    AdaptedCommand adapted;
    adapted.arguments = arguments;
    Adapter(&adapted, ffmpeg, facts).adapt();
    return adapted;
}

} // namespace ffmpeglauncher
