// SPDX-License-Identifier: MIT
// Crashes in the way that its argument names, with a hook that tells of it.
#include "platform/crashhook.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>

#include <unistd.h>

namespace {

std::string manner;

void fault()
{
    // In the page that is never mapped. A sanitizer would find a null pointer first.
    int *volatile nowhere = reinterpret_cast<int *>(std::uintptr_t(64));
    *nowhere = 1;
}

int overflow(int depth)
{
    volatile char block[4096] = {};
    block[depth % 4096] = char(depth);
    return depth < 1 << 20 ? overflow(depth + 1) + block[0] : 0;
}

int tell()
{
    if (manner == "twice")
        fault();
    if (manner == "throws")
        throw std::runtime_error("in the callback");
    const ssize_t written = write(STDOUT_FILENO, "told\n", 5);
    while (manner == "hangs")
        pause();
    return written == 5 ? 1 : 0;
}

} // namespace

int main(int argc, char *argv[])
{
    manner = argc > 1 ? argv[1] : "";
    installCrashHook(tell, std::chrono::milliseconds(1000));
    if (manner == "terminate")
        std::thread([] { throw std::runtime_error("uncaught"); }).join();
    if (manner == "overflow")
        return overflow(0);
    std::thread other;
    if (manner == "threads")
        other = std::thread(fault);
    fault();
    return 0;
}
