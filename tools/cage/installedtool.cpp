// SPDX-License-Identifier: MIT
#include "cage/installedtool.h"

#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace cage {

namespace {

bool isRunnable(const std::string &path, const std::string &selfPath)
{
    struct stat candidate = {};
    struct stat self = {};
    if (stat(path.c_str(), &candidate) != 0 || !S_ISREG(candidate.st_mode))
        return false;
    if (access(path.c_str(), X_OK) != 0)
        return false;
    const bool same = stat(selfPath.c_str(), &self) == 0 && self.st_dev == candidate.st_dev &&
                      self.st_ino == candidate.st_ino;
    return !same;
}

} // namespace

std::string findTool(const std::string &builtInPath, const std::string &name,
                     const std::string &searchPath, const std::string &selfPath)
{
    if (isRunnable(builtInPath, selfPath))
        return builtInPath;
    size_t begin = 0;
    while (begin <= searchPath.size()) {
        size_t end = searchPath.find(':', begin);
        if (end == std::string::npos)
            end = searchPath.size();
        const std::string folder = searchPath.substr(begin, end - begin);
        const std::string candidate = (folder.empty() ? "." : folder) + "/" + name;
        if (isRunnable(candidate, selfPath))
            return candidate;
        begin = end + 1;
    }
    return {};
}

std::string findTool(const std::string &builtInPath)
{
    return findTool(builtInPath, builtInPath.substr(builtInPath.rfind('/') + 1),
                    environmentText("PATH"), "/proc/self/exe");
}

std::string environmentText(const char *name)
{
    const char *value = std::getenv(name);
    return value != nullptr ? value : std::string();
}

} // namespace cage
