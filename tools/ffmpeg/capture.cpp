// SPDX-License-Identifier: MIT
#include "ffmpeg/capture.h"

#include <cstdlib>
#include <sstream>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view screenSource = "video=MorvaneScreenRecorder";
constexpr std::string_view soundPrefix = "audio=";
constexpr std::string_view systemSound = "MorvaneVirtualAudioCapturer";
constexpr char playedSound[] = "@DEFAULT_MONITOR@"; // PulseAudio's name for it
constexpr char settingsFile[] = "/MorvaneScreenRecorder.conf";
constexpr int frameRate = 30;
constexpr int longestStall = 30; // seconds, beyond which a machine hasn't been merely busy
// Bytes that come at once, a hundredth of a second: the times that ffmpeg gives to sound are off by
// up to twice as much.
constexpr char soundInputOptions[] =
    "-thread_queue_size 256 -f pulse -sample_rate 48000 -channels 2 -fragment_size 1920";

// Fast enough for a whole screen in motion on half a processor, with the likeness (SSIM) that the
// next slower preset has by itself. Without frames that refer to later ones the end of a piece can
// be cut anywhere. A key frame every two seconds makes seeking quick. Where a busy machine has
// missed frames, repeating others would keep it busier.
constexpr char pictureOptions[] = "-preset superfast -crf 25 -bf 0 -g 60 -pix_fmt yuv420p "
                                  "-colorspace bt709 -color_primaries bt709 -color_trc bt709 "
                                  "-vsync vfr -r 30";
// A rate that all containers of recordings take.
constexpr char soundOptions[] = "-ar 44100 -ac 2 -b:a 192k";
// What has been recorded is on the disk within a second.
constexpr char pieceOptions[] = "-f matroska -cluster_time_limit 1000 -flush_packets 1 "
                                "-max_interleave_delta 1000000";

using Words = std::vector<std::string>;

void append(Words *words, const std::string &text)
{
    std::istringstream stream(text);
    std::string word;
    while (stream >> word)
        words->push_back(word);
}

std::string seconds(int64_t us)
{
    const std::string digits = std::to_string(us % 1'000'000);
    return std::to_string(us / 1'000'000) + "." + std::string(6 - digits.size(), '0') + digits;
}

// "WxH" as filters have it; empty for anything else.
std::string boxOf(const std::string &size)
{
    const size_t times = size.find('x');
    return times == std::string::npos ? "" : size.substr(0, times) + ":" + size.substr(times + 1);
}

// One recording on its way to what this system's ffmpeg takes.
class Capture
{
public:
    explicit Capture(const CaptureFacts &facts) : m_facts(facts), m_start(seconds(facts.startUs)) {}

    void addInput(const std::string &source);
    void addWord(const std::string &word) { m_output.push_back(word); }
    void setSize(const std::string &size) { m_size = size; }
    Words words(const std::string &path) const;

private:
    void addScreen();
    void addSound(const std::string &device);
    int64_t setting(const std::string &name, int64_t fallback) const;
    std::string sinceStart() const;
    std::string pictureFilters() const;
    std::string soundGraph() const;

    const CaptureFacts &m_facts;
    const std::string m_start; // seconds since the epoch
    Words m_inputs;
    Words m_output; // the output's options as they are
    std::string m_size;
    int m_inputCount = 0;
    int m_screen = -1; // number of the input
    std::vector<int> m_sounds;
};

int64_t Capture::setting(const std::string &name, int64_t fallback) const
{
    const auto found = m_facts.settings.find(name);
    return found == m_facts.settings.end() ? fallback : found->second;
}

void Capture::addInput(const std::string &source)
{
    // Nothing has to be found out about streams that have one form only, which takes a second.
    append(&m_inputs, "-probesize 32 -analyzeduration 0");
    if (source == screenSource)
        addScreen();
    else
        addSound(source.substr(soundPrefix.size()));
    ++m_inputCount;
}

// A picture that has to wait is late for good: few are kept, so that an encoder which falls behind
// leaves some out but doesn't lag.
void Capture::addScreen()
{
    append(&m_inputs,
           "-thread_queue_size 8 -f x11grab -draw_mouse 1 -framerate " + std::to_string(frameRate));
    const int64_t width = setting("capture_width", 0);
    const int64_t height = setting("capture_height", 0);
    if (width > 0 && height > 0)
        append(&m_inputs, "-video_size " + std::to_string(width) + "x" + std::to_string(height));
    const int64_t window = setting("hwnd_to_track", 0);
    if (window > 0) {
        append(&m_inputs, "-window_id " + std::to_string(window));
    } else {
        append(&m_inputs, "-grab_x " + std::to_string(setting("start_x", 0)) + " -grab_y " +
                              std::to_string(setting("start_y", 0)));
    }
    m_inputs.insert(m_inputs.end(), {"-i", m_facts.display});
    m_screen = m_inputCount;
}

void Capture::addSound(const std::string &device)
{
    append(&m_inputs, soundInputOptions);
    m_inputs.insert(m_inputs.end(), {"-i", device == systemSound ? playedSound : device});
    m_sounds.push_back(m_inputCount);
}

// The time of a frame or of a block of sound since the recording's beginning, in units of the
// stream. A machine that has slept, or whose clock is set, doesn't record for as long.
std::string Capture::sinceStart() const
{
    return "st(2,ld(2)+if(gt(abs(PTS-PREV_INPTS)*TB," + std::to_string(longestStall) +
           "),PTS-PREV_INPTS,0));PTS-ld(2)-" + m_start + "/TB";
}

// What a frame shows has come to the screen in the time since the one before, half of it ago as a
// rule; sound has no such delay. A frame that comes a little early or late still takes the place
// behind the one before, so that no picture is shown twice and none is left out for that.
std::string Capture::pictureFilters() const
{
    const std::string rate = std::to_string(frameRate);
    const std::string steady = "st(0,(" + sinceStart() + ")*TB*" + rate +
                               "-0.5);st(1,PREV_OUTPTS*TB*" + rate +
                               "+1);round(if(isnan(PREV_OUTPTS)+gt(abs(ld(0)-ld(1)),0.75),ld(0),"
                               "ld(1)))/" +
                               rate + "/TB";
    const std::string box = boxOf(m_facts.canvas.empty() ? m_size : m_facts.canvas);
    const std::string fit =
        box.empty()
            ? "scale=iw:ih:flags=fast_bilinear"
            : "scale=" + box +
                  ":force_original_aspect_ratio=decrease:force_divisible_by=2:flags=bilinear";
    const std::string bars = m_facts.canvas.empty() ? "" : ",pad=" + box + ":-1:-1";
    return "setpts='" + steady + "',trim=start=0,crop=trunc(iw/2)*2:trunc(ih/2)*2:0:0," + fit +
           ":out_color_matrix=bt709:out_range=tv" + bars + ",setsar=1";
}

std::string Capture::soundGraph() const
{
    const std::string steady =
        "asetpts='" + sinceStart() + "',aresample=44100:async=1000:first_pts=0";
    std::string graph;
    std::string mixed;
    for (const int input : m_sounds) {
        std::string label = "[s";
        label.append(std::to_string(input)).append("]");
        graph.append("[").append(std::to_string(input)).append(":a]");
        graph.append(steady).append(label).append(";");
        mixed.append(label);
    }
    return graph + mixed + "amix=inputs=" + std::to_string(m_sounds.size()) + ":normalize=0[sound]";
}

Words Capture::words(const std::string &path) const
{
    Words words{"-copyts"};
    words.insert(words.end(), m_inputs.begin(), m_inputs.end());
    if (m_screen >= 0) {
        words.insert(words.end(),
                     {"-map", std::to_string(m_screen) + ":v", "-vf", pictureFilters()});
        append(&words, pictureOptions);
    }
    if (!m_sounds.empty()) {
        words.insert(words.end(), {"-filter_complex", soundGraph(), "-map", "[sound]"});
        append(&words, soundOptions);
    }
    // The sound of a window that is gone goes on, or of a screen that has another size now.
    words.emplace_back("-shortest");
    words.insert(words.end(), m_output.begin(), m_output.end());
    if (!m_facts.piece.empty())
        append(&words, pieceOptions);
    words.push_back(m_facts.piece.empty() ? path : m_facts.piece);
    return words;
}

bool isSource(const Words &words, size_t i)
{
    if (i + 3 >= words.size() || words[i] != "-f" || words[i + 1] != "dshow" ||
        words[i + 2] != "-i")
        return false;
    const std::string &source = words[i + 3];
    return source == screenSource || source.compare(0, soundPrefix.size(), soundPrefix) == 0;
}

} // namespace

bool isCapture(const std::vector<std::string> &arguments)
{
    for (size_t i = 0; i < arguments.size(); ++i) {
        if (isSource(arguments, i))
            return true;
    }
    return false;
}

std::vector<std::string> adaptCapture(const std::vector<std::string> &arguments,
                                      const CaptureFacts &facts)
{
    Capture capture(facts);
    for (size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (isSource(arguments, i)) {
            capture.addInput(arguments[i + 3]);
            i += 3;
        } else if (arguments[i] == "-s") {
            capture.setSize(arguments[i + 1]);
            ++i;
        } else {
            capture.addWord(arguments[i]);
        }
    }
    return capture.words(arguments.back());
}

std::map<std::string, int64_t> parseCaptureSettings(const std::string &text)
{
    std::map<std::string, int64_t> settings;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const char *const value = line.c_str() + equals + 1;
        char *end = nullptr;
        const int64_t number = std::strtoll(value, &end, 10);
        if (end != value)
            settings[line.substr(0, equals)] = number;
    }
    return settings;
}

std::string captureSettingsPath(const std::string &configRoot, const std::string &home)
{
    if (!configRoot.empty())
        return configRoot + settingsFile;
    return home.empty() ? std::string() : home + "/.config" + settingsFile;
}

} // namespace ffmpeglauncher
