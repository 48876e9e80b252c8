// SPDX-License-Identifier: MIT
#include "platform/diskspace.h"

#include <QFile>

#include <sys/statvfs.h>

qint64 freeDiskSpace(const QString &dir)
{
    struct statvfs volume;
    if (::statvfs(QFile::encodeName(dir).constData(), &volume) != 0)
        return -1;
    return qint64(volume.f_bavail) * qint64(volume.f_frsize);
}
