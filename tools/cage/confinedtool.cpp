// SPDX-License-Identifier: MIT
// Becomes an installed tool that may read the files which its arguments name, and write where they
// name files that don't exist yet.
#include "cage/cage.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string tool = MORVANE_REAL_TOOL_PATH;

bool exists(const std::string &path)
{
    struct stat facts
    {
    };
    return stat(path.c_str(), &facts) == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    cage::Needs needs;
    needs.program = tool;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (exists(word))
            needs.readable.push_back(word);
        else if (word.find('/') != std::string::npos)
            needs.writable.push_back(word.substr(0, word.rfind('/') + 1));
    }
    cage::confine(needs);
    execv(tool.c_str(), argv);
    std::fprintf(stderr, "%s: %s\n", tool.c_str(), std::strerror(errno));
    return 127;
}
