// SPDX-License-Identifier: MIT
// Becomes an installed tool that may read the files which its arguments name and, if it is one that
// writes, write where they name files that don't exist yet.
#include "cage/cage.h"
#include "cage/heldplaces.h"
#include "cage/installedtool.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr bool writes = MORVANE_TOOL_WRITES;

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
    needs.program = cage::findTool(MORVANE_REAL_TOOL_PATH);
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (exists(word))
            needs.readable.push_back(word);
        else if (writes && word.find('/') != std::string::npos)
            needs.writable.push_back(word.substr(0, word.rfind('/') + 1));
    }
    const std::string refused = cage::holdPlaces(&needs.writable);
    if (!refused.empty()) {
        std::fprintf(stderr, "%s: no folder of this user alone\n", refused.c_str());
        return 1;
    }
    cage::confine(needs);
    execv(needs.program.c_str(), argv);
    std::fprintf(stderr, "%s: %s\n", MORVANE_REAL_TOOL_PATH, std::strerror(errno));
    return 127;
}
