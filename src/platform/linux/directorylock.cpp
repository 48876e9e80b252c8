// SPDX-License-Identifier: MIT
#include "platform/directorylock.h"

#include <QFile>

#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// Between open() and flock() another process may have removed the folder, and a new one of the
// same name may stand in its place.
static bool isStillAt(int fd, const QByteArray &path)
{
    struct stat opened;
    struct stat present;
    return ::fstat(fd, &opened) == 0 && ::lstat(path.constData(), &present) == 0 &&
           opened.st_dev == present.st_dev && opened.st_ino == present.st_ino;
}

DirectoryLock::DirectoryLock(DirectoryLock &&other) noexcept : m_fd(std::exchange(other.m_fd, -1))
{
}

DirectoryLock &DirectoryLock::operator=(DirectoryLock &&other) noexcept
{
    std::swap(m_fd, other.m_fd);
    DirectoryLock released(std::move(other));
    return *this;
}

DirectoryLock::~DirectoryLock()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

QString DirectoryLock::place() const
{
    const QString link = QStringLiteral("/proc/self/fd/%1").arg(m_fd);
    const QString present = isHeld() ? QFile::symLinkTarget(link) : QString();
    return !present.isEmpty() && isStillAt(m_fd, QFile::encodeName(present)) ? present : QString();
}

DirectoryLock DirectoryLock::tryExclusive(const QString &dir)
{
    return tryLock(dir, LOCK_EX);
}

DirectoryLock DirectoryLock::tryShared(const QString &dir)
{
    return tryLock(dir, LOCK_SH);
}

DirectoryLock DirectoryLock::tryLock(const QString &dir, int operation)
{
    const QByteArray path = QFile::encodeName(dir);
    DirectoryLock lock(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!lock.isHeld())
        return {};
    if (::flock(lock.m_fd, operation | LOCK_NB) != 0 || !isStillAt(lock.m_fd, path))
        return {};
    return lock;
}
