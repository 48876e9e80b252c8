// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/removedir.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "platform/openfolder.h"

#include <QDir>
#include <QFileInfo>

namespace {

void removeEmptyParents(QString path)
{
    while (!isTempMarkerName(QFileInfo(path).fileName())) {
        const QString parent = QFileInfo(path).path();
        if (parent == path || !QDir().rmdir(parent))
            return;
        path = parent;
    }
}

} // namespace

bool removeDirRecursively(const QString &path)
{
    if (path.isEmpty())
        return true;
    const QString absolute = QDir::cleanPath(QDir().absoluteFilePath(path));
    const QFileInfo info(absolute);
    const bool isLink = info.isSymLink();
    if (!info.exists() && !isLink)
        return true;
    const OpenFolder parent = OpenFolder::at(info.path());
    if ((!info.isDir() && !isLink) || !parent.remove(info.fileName()))
        return false;
    if (isLink)
        return true;
    removeEmptyParents(absolute);
    return true;
}
