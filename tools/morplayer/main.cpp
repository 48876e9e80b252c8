// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <unistd.h>

// Becomes the installed mpv, with the outputs that draw into a given window: the graphics card's,
// or plain X11 where there is none. Left to itself, mpv then takes one that opens a window of its
// own.
int main(int argc, char *argv[])
{
    char name[] = MORVANE_REAL_MPV_PATH;
    char output[] = "--vo=gpu,x11";
    std::vector<char *> arguments{name, output};
    for (int i = 1; i < argc; ++i)
        arguments.push_back(argv[i]);
    arguments.push_back(nullptr);
    ::execv(name, arguments.data());
    std::fprintf(stderr, "%s: %s\n", name, std::strerror(errno));
    return 127;
}
