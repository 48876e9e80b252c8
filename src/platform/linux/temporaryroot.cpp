// SPDX-License-Identifier: MIT
#include "platform/temporaryroot.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

static bool isTakenByOthers(const QString &path)
{
    struct stat info;
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    return info.st_uid != ::getuid() || S_ISLNK(info.st_mode);
}

QString temporaryRoot()
{
    QString base = QFile::decodeName(qgetenv("XDG_CACHE_HOME"));
    if (!QDir::isAbsolutePath(base))
        base = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    const QString root = QDir::cleanPath(base + QStringLiteral("/MorvaneLocal"));
    if (!isTakenByOthers(root))
        return root;
    const QString ownRoot = root + QLatin1Char('-') + QString::number(::getuid());
    if (!isTakenByOthers(ownRoot))
        return ownRoot;
    // Somebody means to be in the way; nobody else can write here.
    return QDir::homePath() + QStringLiteral("/.cache/MorvaneLocal");
}
