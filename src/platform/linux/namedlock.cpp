// SPDX-License-Identifier: MIT
#include "platform/namedlock.h"

#include "platform/runtimeroot.h"

#include <QDir>

DirectoryLock tryNamedLock(const QString &name)
{
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')) || name.contains(QLatin1Char('/')))
        return {};
    const QString folder = runtimeRoot() + QLatin1Char('/') + name;
    if (!QDir().mkpath(folder))
        return {};
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return DirectoryLock::tryExclusive(folder);
}
