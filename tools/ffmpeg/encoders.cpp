// SPDX-License-Identifier: MIT
#include "ffmpeg/encoders.h"

#include <algorithm>
#include <iterator>

namespace ffmpeglauncher {

namespace {

// Phones play H.264 in 3GP; ffmpeg's own choice there, H.263, takes five sizes of picture only.
constexpr Container containers[] = {
    {"3g2", "libx264", "aac", false},
    {"3gp", "libx264", "aac", false},
    {"aac", "", "aac", false},
    {"asf", "msmpeg4", "wmav2", false},
    {"avi", "mpeg4", "libmp3lame", false},
    {"f4v", "libx264", "aac", true},
    {"flac", "", "flac", false},
    {"flv", "flv", "libmp3lame", false},
    {"gif", "gif", "", false},
    {"m2ts", "mpeg2video", "mp2", false},
    {"m4a", "", "aac", false},
    {"m4b", "", "aac", false},
    {"m4v", "libx264", "aac", true},
    {"mkv", "libx264", "libvorbis", true},
    {"mov", "libx264", "aac", true},
    {"mp4", "libx264", "aac", true},
    {"mpeg", "mpeg1video", "mp2", false},
    {"mpg", "mpeg1video", "mp2", false},
    {"mts", "mpeg2video", "mp2", false},
    {"mxf", "mpeg2video", "pcm_s16le", false},
    {"ogg", "libtheora", "libvorbis", true},
    {"ogv", "libtheora", "libvorbis", true},
    {"swf", "flv", "libmp3lame", false},
    {"ts", "mpeg2video", "mp2", false},
    {"vob", "mpeg2video", "mp2", false},
    {"webm", "libvpx-vp9", "libopus", true},
    {"wma", "", "wmav2", false},
    {"wmv", "msmpeg4", "wmav2", false},
    {"wtv", "mpeg2video", "mp2", false},
};

// Each quality reaches that of H.264 where nothing is named (SSIM on grainy films of three kinds).
// Left alone, these encoders take 200 kbit/s.
constexpr char steadyQuality[] = "-q:v 5";
// The buffer is what the high level of MPEG-2 allows; without one, multiplexers warn of underflow.
constexpr char bufferedQuality[] = "-q:v 5 -maxrate 40M -bufsize 9781k";
constexpr char theoraQuality[] = "-q:v 7";
constexpr char vp8Quality[] = "-crf 22 -b:v 50M";
// VP9 has a quality of its own, at a speed of two or three frames a second. Like this it is as fast
// as H.264, and its files a fifth larger.
constexpr char vp9Speed[] = "-row-mt 1 -deadline realtime -cpu-used 5";
// What MPEG-1 and 2 know no frame rate below.
constexpr int mpegRate = 25;

constexpr VideoEncoder videoEncoders[] = {
    {"flv", "yuv420p", steadyQuality},
    {"flv1", "yuv420p", steadyQuality},
    {"gif", "", ""},
    {"h263", "yuv420p", steadyQuality},
    {"libtheora", "yuv420p", theoraQuality},
    {"libvpx", "yuv420p", vp8Quality},
    {"libvpx-vp9", "yuv420p", vp9Speed, true},
    {"libx264", "yuv420p", "", true},
    {"libx265", "yuv420p", "", true},
    {"libxvid", "yuv420p", steadyQuality},
    {"mpeg1video", "yuv420p", bufferedQuality, false, mpegRate},
    {"mpeg2video", "yuv420p", bufferedQuality, true, mpegRate},
    {"mpeg4", "yuv420p", steadyQuality},
    {"msmpeg4", "yuv420p", steadyQuality},
    {"msmpeg4v2", "yuv420p", steadyQuality},
    {"wmv1", "yuv420p", steadyQuality},
    {"wmv2", "yuv420p", steadyQuality},
};

// Hz; what devices play.
constexpr char usualRates[] = "8000|11025|12000|16000|22050|24000|32000|44100|48000";

constexpr AudioEncoder audioEncoders[] = {
    // More channels, or the surround ones at the side, take a form that many players refuse.
    {"aac", "mono|stereo|3.0|4.0|5.0|5.1", usualRates},
    {"flac", "mono|stereo|3.0|quad|5.0|5.0(side)|5.1|5.1(side)|6.1|7.1", ""},
    {"libopus", "mono|stereo|3.0|quad|5.0|5.1|6.1|7.1", ""},
    {"libvorbis", "mono|stereo|3.0|quad|5.0|5.1|6.1|7.1", ""},
    {"wmav1", "mono|stereo", usualRates},
    {"wmav2", "mono|stereo", usualRates},
};

// Null when no row has that name.
template<class Row, size_t count>
const Row *find(const Row (&table)[count], const std::string &name)
{
    const Row *row = std::find_if(std::begin(table), std::end(table),
                                  [&name](const Row &candidate) { return name == candidate.name; });
    return row == std::end(table) ? nullptr : row;
}

} // namespace

const Container &containerNamed(const std::string &name)
{
    static constexpr Container unknown;
    const Container *known = find(containers, name);
    return known != nullptr ? *known : unknown;
}

const VideoEncoder *videoEncoderNamed(const std::string &name)
{
    return find(videoEncoders, name);
}

const AudioEncoder *audioEncoderNamed(const std::string &name)
{
    return find(audioEncoders, name);
}

} // namespace ffmpeglauncher
