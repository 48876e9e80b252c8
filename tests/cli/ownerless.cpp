// SPDX-License-Identifier: MIT
// A library that is loaded in front of the system's, and makes of each folder below one named
// "share" one of a file system that keeps no owners, as FAT: everything belongs to somebody else,
// may be written by all, and takes no other rights.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isOnShare(const std::string &path)
{
    char target[4096] = "";
    const ssize_t length = readlink(path.c_str(), target, sizeof target - 1);
    return std::strstr(length > 0 ? target : path.c_str(), "/share") != nullptr;
}

template<class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" int fstat(int descriptor, struct stat *facts) noexcept
{
    const int result = next<int (*)(int, struct stat *)>("fstat")(descriptor, facts);
    if (result == 0 && isOnShare("/proc/self/fd/" + std::to_string(descriptor))) {
        facts->st_uid = 4711;
        facts->st_mode |= 0777;
    }
    return result;
}

extern "C" int chmod(const char *path, mode_t mode) noexcept
{
    if (isOnShare(path)) {
        errno = EPERM;
        return -1;
    }
    return next<int (*)(const char *, mode_t)>("chmod")(path, mode);
}
