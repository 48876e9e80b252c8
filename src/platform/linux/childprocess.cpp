// SPDX-License-Identifier: MIT
#include "platform/childprocess.h"

#include <algorithm>
#include <csignal>
#include <vector>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {
// What a shell gives for a command that it could not run.
constexpr int notRunExitCode = 127;
// A big encoder on a busy machine needs a tenth of this.
constexpr int endWaitMs = 500;

class Discarded : public QObject
{
public:
    static Discarded &instance()
    {
        static Discarded discarded;
        return discarded;
    }

    // A QProcess waits in its destructor for a child that runs.
    ~Discarded() override
    {
        for (auto &child : m_children) {
            if (child->state() != QProcess::NotRunning)
                static_cast<void>(child.release());
        }
    }

    void add(std::unique_ptr<ChildProcess> child)
    {
        child->disconnect();
        connect(child.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                &Discarded::deleteEnded, Qt::QueuedConnection);
        m_children.push_back(std::move(child));
        QMetaObject::invokeMethod(this, &Discarded::deleteEnded, Qt::QueuedConnection);
    }

private:
    Discarded() = default;

    void deleteEnded()
    {
        const auto isEnded = [](const auto &child) {
            return child->state() == QProcess::NotRunning;
        };
        m_children.erase(std::remove_if(m_children.begin(), m_children.end(), isEnded),
                         m_children.end());
    }

    std::vector<std::unique_ptr<ChildProcess>> m_children;
};
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

bool ChildProcess::endNow()
{
    // With what the child is just starting: until that is tied to it, it would outlive the child,
    // and wait for its word for ever.
    if (m_group == Group::Own && processId() > 0)
        ::kill(-pid_t(processId()), SIGKILL);
    kill();
    return state() == NotRunning || waitForFinished(endWaitMs) || state() == NotRunning;
}

void discardChild(std::unique_ptr<ChildProcess> child)
{
    Discarded::instance().add(std::move(child));
}
