// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include <memory>

/// A child process that dies with this program, also when this program is killed.
///
/// The tie has to be made in the child between fork and exec; QProcess::setupChildProcess() is
/// the only hook that Qt 5 has there, hence the subclass. The system ties the child to the thread
/// that forks it, so start() belongs on a thread that lives as long as the program.
class ChildProcess : public QProcess
{
public:
    /// Which processes are frozen and woken together with the child, see suspendProcess().
    enum class Group {
        Own,     ///< the child and what it starts itself
        Program, ///< the child belongs to this program, as its own threads do
    };

    explicit ChildProcess(QObject *parent = nullptr, Group group = Group::Own);

    /// How far the child stands back for other programs when processors are scarce, for the next
    /// start.
    /// @param niceness 0 for not at all, at most 19
    void setNiceness(int niceness) { m_niceness = niceness; }

    /// Kills the child, with its own children where it has a group of its own, and waits until it
    /// is gone, for half a second at most: one that waits for a disk or a share which no longer
    /// answers can't be ended.
    /// @return whether it is gone
    bool endNow();

protected:
    void setupChildProcess() override;

private:
    qint64 m_ownerPid;
    Group m_group;
    int m_niceness = 0;
};

/// Takes over a child that nobody wants any more and deletes it later, when it has ended. A child
/// that can't be ended never holds up the program's own end. Its signals reach nobody any more.
/// May be called inside one of them.
void discardChild(std::unique_ptr<ChildProcess> child);
