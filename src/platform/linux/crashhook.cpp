// SPDX-License-Identifier: MIT
#include "platform/crashhook.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

// An uncaught exception and qFatal() come as SIGABRT.
constexpr int fatalSignals[] = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS};
// For the handler alone, which needs little; a stack that overflowed has no room for it.
constexpr size_t alternateStackSize = 64 * 1024;

struct Pipe
{
    int readEnd = -1;
    int writeEnd = -1;
};

CrashCallback crashCallback = nullptr;
int limitMs = 0;
Pipe wakePipe;
Pipe donePipe;
pthread_t callbackThread;
std::atomic<bool> hasCrashed{false};
alignas(16) char alternateStack[alternateStackSize];

bool open(Pipe &ends)
{
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0)
        return false;
    ends = {fds[0], fds[1]};
    return true;
}

void put(int fd)
{
    const char byte = 0;
    const ssize_t written = write(fd, &byte, 1);
    static_cast<void>(written);
}

void waitForCallback()
{
    pollfd done = {donePipe.readEnd, POLLIN, 0};
    poll(&done, 1, limitMs);
}

// Only async-signal-safe calls. The memory allocator's and the log's locks may be held here: what
// needs them runs on the other thread, for which this one waits no longer than the limit.
extern "C" void onFatalSignal(int number)
{
    const int error = errno;
    if (pthread_equal(pthread_self(), callbackThread) == 0) {
        if (!hasCrashed.exchange(true))
            put(wakePipe.writeEnd);
        waitForCallback();
    }
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(number, &action, nullptr);
    // Blocked until the handler returns: the dump then shows the place of the fault.
    raise(number);
    errno = error;
}

void runCallbackThread()
{
    char byte = 0;
    ssize_t count = -1;
    do {
        count = read(wakePipe.readEnd, &byte, 1);
    } while (count < 0 && errno == EINTR);
    if (count == 1)
        crashCallback();
    put(donePipe.writeEnd);
}

// The thread starts with all signals blocked: none meant for the program lands on it, and the
// system ends the process at once when it faults.
void startCallbackThread()
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(runCallbackThread);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    callbackThread = thread.native_handle();
    thread.detach();
}

} // namespace

void installCrashHook(CrashCallback callback, std::chrono::milliseconds limit)
{
    crashCallback = callback;
    limitMs = int(limit.count());
    if (!open(wakePipe) || !open(donePipe))
        return;
    startCallbackThread();
    const stack_t stack = {alternateStack, 0, sizeof alternateStack};
    sigaltstack(&stack, nullptr);
    struct sigaction action = {};
    action.sa_handler = onFatalSignal;
    action.sa_flags = SA_ONSTACK;
    for (const int number : fatalSignals)
        sigaction(number, &action, nullptr);
}
