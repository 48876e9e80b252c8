// SPDX-License-Identifier: MIT
// Becomes an installed tool that may read the files which its arguments name and, if it is one that
// writes, write where they name files that don't exist yet; or a player.
#include "cage/cage.h"
#include "cage/heldplaces.h"
#include "cage/installedtool.h"
#include "cage/playercage.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace {

enum Kind { Reads, Writes, Plays };
constexpr Kind kind = MORVANE_TOOL_KIND;

bool exists(const std::string &path)
{
    struct stat facts
    {
    };
    return stat(path.c_str(), &facts) == 0;
}

// False when a place to write in isn't this user's alone.
bool confineToArguments(const std::string &program, int argc, char *argv[])
{
    cage::Needs needs;
    needs.program = program;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (exists(word))
            needs.readable.push_back(word);
        else if (kind == Writes && word.find('/') != std::string::npos)
            needs.writable.push_back(word.substr(0, word.rfind('/') + 1));
    }
    const std::string refused = cage::holdPlaces(&needs.writable);
    if (!refused.empty()) {
        std::fprintf(stderr, "%s: no folder of this user alone\n", refused.c_str());
        return false;
    }
    cage::confine(needs);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::string program = cage::findTool(MORVANE_REAL_TOOL_PATH);
    if (kind == Plays)
        cage::confinePlayer();
    else if (!confineToArguments(program, argc, argv))
        return 1;
    execv(program.c_str(), argv);
    std::fprintf(stderr, "%s: %s\n", MORVANE_REAL_TOOL_PATH, std::strerror(errno));
    return 127;
}
