// SPDX-License-Identifier: MIT
#include "cage/playercage.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

const std::string realPlayer = MORVANE_REAL_MPV_PATH;

// In front of the program's own options, so that those win.
std::vector<std::string> ownOptions()
{
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return {
        // The outputs that draw into a given window: the graphics card's, or plain X11 where there
        // is none. Left to itself, mpv then takes one that opens a window of its own.
        "--vo=gpu,x11",
        "--script=" + (self.parent_path() / "hdr.lua").string(),
        // The window around the picture is in command. X gives keys to the innermost window under
        // the pointer that wants them, whatever window has the focus.
        "--no-osc",
        "--input-default-bindings=no",
        "--input-vo-keyboard=no",
        "--input-cursor=no",
        // A medium is a file: what it names in its content, and scripts beside it, are nobody's
        // wish.
        "--load-scripts=no",
        "--ytdl=no",
        "--load-unsafe-playlists=no",
        "--access-references=no",
        // None: what is played is opened by mpv itself.
        "--demuxer-lavf-o=protocol_whitelist=none",
    };
}

} // namespace

// Becomes the installed mpv, as one that only plays into a given window.
int main(int argc, char *argv[])
{
    std::vector<std::string> words{realPlayer};
    for (const std::string &option : ownOptions())
        words.push_back(option);
    words.insert(words.end(), argv + 1, argv + argc);
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    cage::confinePlayer();
    ::execv(realPlayer.c_str(), arguments.data());
    std::fprintf(stderr, "%s: %s\n", realPlayer.c_str(), std::strerror(errno));
    return 127;
}
