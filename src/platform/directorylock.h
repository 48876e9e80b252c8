// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A lock on a folder, between processes and between objects of one process. It leaves no file
/// behind, is given back by the destructor, and dies with the process that holds it; child
/// processes don't inherit it. The folder may be removed while it is locked.
class DirectoryLock
{
public:
    /// Holds nothing.
    DirectoryLock() = default;
    DirectoryLock(DirectoryLock &&other) noexcept;
    DirectoryLock &operator=(DirectoryLock &&other) noexcept;
    ~DirectoryLock();

    /// Locks `dir` against every other lock, without waiting. The result holds nothing when the
    /// folder is locked elsewhere, isn't a folder (or is a link to one), or can't be locked.
    static DirectoryLock tryExclusive(const QString &dir);

    /// As tryExclusive(), but compatible with other shared locks.
    static DirectoryLock tryShared(const QString &dir);

    bool isHeld() const { return m_fd >= 0; }

    /// Where the locked folder is now, wherever it has been moved to; empty when nothing is held or
    /// the folder is gone.
    QString place() const;

private:
    explicit DirectoryLock(int fd) : m_fd(fd) {}
    static DirectoryLock tryLock(const QString &dir, int operation);

    int m_fd = -1;
};
