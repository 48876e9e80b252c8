// SPDX-License-Identifier: MIT
#include "platform/runtimeroot.h"

#include "platform/temporaryroot.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

QString runtimeRoot()
{
    // Started through sudo, the variable may name another user's folder.
    const QFileInfo folder(QFile::decodeName(qgetenv("XDG_RUNTIME_DIR")));
    const bool isOurs = folder.isAbsolute() && folder.isDir() && folder.ownerId() == ::getuid();
    return isOurs ? QDir::cleanPath(folder.filePath()) : temporaryRoot();
}
