// SPDX-License-Identifier: MIT
#include "platform/workplace.h"

#include <algorithm>
#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int openPlace(const std::string &path, int linksLeft);

constexpr mode_t rightsOfOthers = S_IRWXG | S_IRWXO;
constexpr mode_t writingOfOthers = S_IWGRP | S_IWOTH;

bool isOurs(const struct stat &facts)
{
    return facts.st_uid == ::geteuid() && (facts.st_mode & writingOfOthers) == 0;
}

// A file is ours beyond doubt from the moment in which it is made.
bool keepsOwners(int folder)
{
    constexpr int tries = 100;
    const std::string name = ".owner-" + std::to_string(::getpid()) + "-";
    for (int i = 0; i < tries; ++i) {
        const std::string probe = name + std::to_string(i);
        const int file = ::openat(folder, probe.c_str(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR);
        if (file < 0 && errno == EEXIST)
            continue;
        if (file < 0)
            return true;
        struct stat facts = {};
        const bool isKept = ::fstat(file, &facts) != 0 || isOurs(facts);
        ::close(file);
        ::unlinkat(folder, probe.c_str(), 0);
        return isKept;
    }
    return true;
}

// Where the last marker in a path ends; 0 without one.
size_t endOfMarker(const std::string &path)
{
    for (size_t end = path.size(); end > 0;) {
        const size_t slash = path.rfind('/', end - 1);
        const size_t begin = slash == std::string::npos ? 0 : slash + 1;
        if (isMarkerName(path.substr(begin, end - begin)))
            return end;
        end = slash == std::string::npos ? 0 : slash;
    }
    return 0;
}

// Takes the folder in exchange for the one in it. Links in a folder of ours alone are ours, but
// what they lead to has to be looked at, too.
int enter(int folder, const std::string &name, int linksLeft)
{
    constexpr int way = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    int inner = name == ".." ? -1 : ::openat(folder, name.c_str(), way);
    if (inner < 0 && linksLeft > 0) {
        std::string target(PATH_MAX, '\0');
        const ssize_t length = ::readlinkat(folder, name.c_str(), target.data(), target.size() - 1);
        if (length > 0 && target[0] == '/')
            inner = openPlace(target.substr(0, size_t(length)), linksLeft - 1);
    }
    ::close(folder);
    return inner;
}

int openPlace(const std::string &path, int linksLeft)
{
    size_t end = endOfMarker(path);
    if (end == 0)
        return ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    int folder = ::open(path.substr(0, end).c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder >= 0 && !makePrivate(folder)) {
        ::close(folder);
        return -1;
    }
    while (folder >= 0 && end < path.size()) {
        const size_t begin = end + 1;
        end = std::min(path.find('/', begin), path.size());
        if (end > begin)
            folder = enter(folder, path.substr(begin, end - begin), linksLeft);
    }
    return folder;
}

} // namespace

bool isMarkerName(const std::string &name)
{
    const size_t length = sizeof markerName - 1;
    return name.compare(0, length, markerName) == 0 &&
           name.find_first_not_of("0123456789", length) == std::string::npos;
}

bool leadsThroughMarker(const std::string &path)
{
    return endOfMarker(path) > 0;
}

bool makePrivate(int folder)
{
    struct stat facts = {};
    if (::fstat(folder, &facts) != 0)
        return false;
    if (facts.st_uid == ::geteuid() && (facts.st_mode & rightsOfOthers) != 0) {
        // The way to a folder that is open for its path alone.
        const std::string way = "/proc/self/fd/" + std::to_string(folder);
        if (::chmod(way.c_str(), (facts.st_mode & ~S_IFMT & ~rightsOfOthers) | S_IRWXU) == 0 &&
            ::fstat(folder, &facts) != 0)
            return false;
    }
    return isOurs(facts) || !keepsOwners(folder);
}

int openWorkPlace(const std::string &path)
{
    constexpr int maxLinks = 4;
    return openPlace(path, maxLinks);
}
