// SPDX-License-Identifier: MIT
// A library that is loaded in front of MediaInfo's, and hangs or crashes where that opens a file
// whose name tells so.
#include <csignal>
#include <cwchar>

#include <dlfcn.h>
#include <unistd.h>

extern "C" size_t MediaInfo_Open(void *handle, const wchar_t *path)
{
    if (std::wcsstr(path, L"hang.") != nullptr)
        pause();
    if (std::wcsstr(path, L"crash.") != nullptr)
        std::raise(SIGSEGV);
    static const auto plainOpen =
        reinterpret_cast<size_t (*)(void *, const wchar_t *)>(dlsym(RTLD_NEXT, "MediaInfo_Open"));
    return plainOpen(handle, path);
}
