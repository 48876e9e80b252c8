// SPDX-License-Identifier: MIT
#include "platform/namedlock.h"

#include "platform/openfolder.h"
#include "platform/runtimeroot.h"

DirectoryLock tryNamedLock(const QString &name)
{
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')) || name.contains(QLatin1Char('/')))
        return {};
    const QString folder = runtimeRoot() + QLatin1Char('/') + name;
    return makePrivateFolder(folder) ? DirectoryLock::tryExclusive(folder) : DirectoryLock();
}
