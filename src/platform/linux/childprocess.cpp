// SPDX-License-Identifier: MIT
#include "platform/childprocess.h"

#include <csignal>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {
// What a shell gives for a command that it could not run.
constexpr int notRunExitCode = 127;
} // namespace

ChildProcess::ChildProcess(QObject *parent, Group group)
    : QProcess(parent), m_ownerPid(::getpid()), m_group(group)
{
}

void ChildProcess::setupChildProcess()
{
    // Runs in the forked child: only async-signal-safe calls. Signal handlers need no care, exec
    // resets them, and QProcess itself restores SIGPIPE.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (m_group == Group::Own)
        ::setpgid(0, 0);
    if (m_niceness > 0)
        ::setpriority(PRIO_PROCESS, 0, m_niceness);
    // An owner that died before the prctl() sends no signal any more.
    if (::getppid() != m_ownerPid)
        ::_exit(notRunExitCode);
}
