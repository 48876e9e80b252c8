// SPDX-License-Identifier: MIT
// A tool that can't be ended while a file is missing. A program that waits for a dead disk or share
// is such a one, and can't be had in a test; here a second process traces the tool, and as long as
// it doesn't let go, the system doesn't tell anybody that the tool has died.
// usage: unendable FILE
#include <chrono>
#include <cstdio>
#include <thread>

#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <unistd.h>

namespace {

int hold(pid_t tool, int ready, const char *file)
{
    setpgid(0, 0); // it isn't the tool's own
    for (int channel = 0; channel <= STDERR_FILENO; ++channel)
        close(channel);
    const bool isHeld = ptrace(PTRACE_SEIZE, tool, nullptr, nullptr) == 0;
    if (write(ready, isHeld ? "y" : "n", 1) != 1 || !isHeld)
        return 1;
    while (access(file, F_OK) != 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    int ready[2];
    if (argc < 2 || pipe(ready) != 0)
        return 2;
    prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
    const pid_t tool = getpid();
    if (fork() == 0)
        return hold(tool, ready[1], argv[1]);
    char answer = 'n';
    if (read(ready[0], &answer, 1) != 1 || answer != 'y')
        return 3;
    std::puts("held");
    std::fflush(stdout);
    while (true)
        pause();
}
