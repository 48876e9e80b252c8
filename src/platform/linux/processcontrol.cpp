// SPDX-License-Identifier: MIT
#include "platform/processcontrol.h"

#include <csignal>
#include <limits>

#include <sys/types.h>
#include <unistd.h>

static bool sendSignal(qint64 pid, int signal)
{
    if (pid <= 0 || pid > std::numeric_limits<pid_t>::max())
        return false;
    const pid_t process = static_cast<pid_t>(pid);
    const bool leads = ::getpgid(process) == process;
    return ::kill(leads ? -process : process, signal) == 0;
}

bool suspendProcess(qint64 pid)
{
    return sendSignal(pid, SIGSTOP);
}

bool resumeProcess(qint64 pid)
{
    return sendSignal(pid, SIGCONT);
}
