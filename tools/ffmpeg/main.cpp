// SPDX-License-Identifier: MIT
#include "cage/cage.h"
#include "cage/heldplaces.h"
#include "cage/installedtool.h"
#include "ffmpeg/adaptcommand.h"
#include "ffmpeg/capture.h"
#include "ffmpeg/openedfiles.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

constexpr int noFfmpegExitCode = 127; // the shell's code for a command that is not found

using cage::environmentText;

std::string realFfmpeg()
{
    const std::string chosen = environmentText("MORVANE_REAL_FFMPEG");
    return chosen.empty() ? cage::findTool(MORVANE_REAL_FFMPEG_PATH)
                          : cage::findTool(chosen, {}, {}, "/proc/self/exe");
}

// The files that the command names, and nothing that is named in those. A recording opens no file,
// and a tool that was put in ffmpeg's place may need anything.
void confine(const std::string &program, const ffmpeglauncher::OpenedFiles &files)
{
    cage::Needs needs;
    needs.program = program;
    needs.readable = files.read;
    needs.writable = files.written;
    const std::string missing = cage::confine(needs);
    if (!missing.empty())
        std::fprintf(stderr, "ffmpeg launcher: %s\n", missing.c_str());
}

int64_t nowUs()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

ffmpeglauncher::CaptureFacts captureFacts()
{
    std::ifstream file(ffmpeglauncher::captureSettingsPath(environmentText("XDG_CONFIG_HOME"),
                                                           environmentText("HOME")));
    const std::string text(std::istreambuf_iterator<char>(file), {});
    ffmpeglauncher::CaptureFacts facts;
    facts.settings = ffmpeglauncher::parseCaptureSettings(text);
    facts.display = environmentText("DISPLAY");
    facts.piece = environmentText(ffmpeglauncher::pieceVariable);
    facts.canvas = environmentText(ffmpeglauncher::canvasVariable);
    facts.startUs = nowUs() + ffmpeglauncher::captureLeadUs;
    return facts;
}

ffmpeglauncher::AdaptedCommand adapted(const std::vector<std::string> &arguments)
{
    if (ffmpeglauncher::isCapture(arguments))
        return {ffmpeglauncher::adaptCapture(arguments, captureFacts()), {}};
    const ffmpeglauncher::InstalledFfmpeg ffmpeg{MORVANE_FFMPEG_HAS_AMR, MORVANE_FFMPEG_HAS_ZSCALE};
    return ffmpeglauncher::adaptCommand(
        arguments, ffmpeg,
        ffmpeglauncher::parseSourceFacts(environmentText(ffmpeglauncher::sourceVariable)));
}

} // namespace

int main(int argc, char **argv)
{
    const std::string program = realFfmpeg();
    if (program.empty()) {
        std::fputs("ffmpeg launcher: no ffmpeg found, please install the package ffmpeg\n", stderr);
        return noFfmpegExitCode;
    }
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const ffmpeglauncher::AdaptedCommand command = adapted(arguments);
    for (const std::string &note : command.notes)
        std::fprintf(stderr, "ffmpeg launcher: %s\n", note.c_str());

    std::vector<char *> words;
    words.push_back(const_cast<char *>(program.c_str()));
    for (const std::string &argument : command.arguments)
        words.push_back(const_cast<char *>(argument.c_str()));
    words.push_back(nullptr);
    ffmpeglauncher::OpenedFiles files = ffmpeglauncher::openedFiles(command.arguments);
    const std::string refused = cage::holdPlaces(&files.written);
    if (!refused.empty()) {
        std::fprintf(stderr, "%s: no folder of this user alone\n", refused.c_str());
        return 1;
    }
    if (!ffmpeglauncher::isCapture(arguments) && environmentText("MORVANE_REAL_FFMPEG").empty())
        confine(program, files);
    execv(program.c_str(), words.data());
    std::fprintf(stderr, "ffmpeg launcher: cannot run %s: %s\n", program.c_str(),
                 std::strerror(errno));
    return noFfmpegExitCode;
}
