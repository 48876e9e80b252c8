// SPDX-License-Identifier: MIT
#include "platform/movefile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

// Some file systems know no such rename; a second name for the file refuses a taken one as well.
static int linkAndUnlink(const char *from, const char *to)
{
    return ::link(from, to) == 0 ? ::unlink(from) : -1;
}

MoveResult moveWithoutReplacing(const QString &from, const QString &to, QString &error)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    int result =
        ::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS))
        result = linkAndUnlink(source.constData(), target.constData());
    if (result == 0)
        return MoveResult::Moved;
    if (errno == EEXIST)
        return MoveResult::NameTaken;
    error = QString::fromLocal8Bit(std::strerror(errno));
    return MoveResult::Failed;
}
