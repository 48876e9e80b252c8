// SPDX-License-Identifier: MIT
// A library that is loaded in front of the system's, and makes of it one whose file system knows
// few ways to rename a finished result, as shared folders of virtual machines are. NORENAME
// chooses: "careless" for renames that replace only, "none" for no renames, "refused" for none that
// work.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>

namespace {

bool isMode(std::string_view mode)
{
    const char *chosen = std::getenv("NORENAME");
    return chosen != nullptr && mode == chosen;
}

// What the chain has made in its work folder.
bool isResult(const char *path)
{
    return std::strstr(path, "/convert.") != nullptr;
}

int refuse(int error)
{
    errno = error;
    return -1;
}

template<class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" int renameat2(int fromDir, const char *from, int toDir, const char *to,
                         unsigned int flags) noexcept
{
    if (isResult(from))
        return refuse(isMode("refused") ? EIO : EINVAL);
    return next<int (*)(int, const char *, int, const char *, unsigned int)>("renameat2")(
        fromDir, from, toDir, to, flags);
}

extern "C" int link(const char *from, const char *to) noexcept
{
    return isResult(from) ? refuse(EPERM)
                          : next<int (*)(const char *, const char *)>("link")(from, to);
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    return isResult(from) && !isMode("careless")
               ? refuse(EIO)
               : next<int (*)(const char *, const char *)>("rename")(from, to);
}
