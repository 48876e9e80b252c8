// SPDX-License-Identifier: MIT
// A library that is loaded in front of the system's, and makes of the files whose name READERROR
// ends their path with ones that can be read to a place only, as on a failing stick: to the first
// half of their bytes.
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isFailing(int file)
{
    const char *name = std::getenv("READERROR");
    std::string path(4096, '\0');
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    if (name == nullptr || length <= 0)
        return false;
    const std::string_view shown(path.data(), size_t(length));
    const std::string_view ending(name);
    return shown.size() >= ending.size() && shown.substr(shown.size() - ending.size()) == ending;
}

} // namespace

extern "C" ssize_t read(int file, void *bytes, size_t count)
{
    static const auto plainRead =
        reinterpret_cast<ssize_t (*)(int, void *, size_t)>(dlsym(RTLD_NEXT, "read"));
    struct stat facts
    {
    };
    if (isFailing(file) && fstat(file, &facts) == 0 &&
        lseek(file, 0, SEEK_CUR) > facts.st_size / 2) {
        errno = EIO;
        return -1;
    }
    return plainRead(file, bytes, count);
}
