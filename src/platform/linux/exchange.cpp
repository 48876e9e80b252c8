// SPDX-License-Identifier: MIT
#include "platform/exchange.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

bool exchangePaths(const QString &first, const QString &second, QString &error)
{
    const QByteArray one = QFile::encodeName(first);
    const QByteArray other = QFile::encodeName(second);
    if (::renameat2(AT_FDCWD, one.constData(), AT_FDCWD, other.constData(), RENAME_EXCHANGE) == 0)
        return true;
    error = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

bool flushFileSystem(const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool flushed = ::syncfs(fd) == 0;
    ::close(fd);
    return flushed;
}
