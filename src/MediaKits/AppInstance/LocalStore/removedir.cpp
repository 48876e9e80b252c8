// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/removedir.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr QFile::Permissions fileAccess = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions directoryAccess = fileAccess | QFile::ExeOwner;

// A refusal shows itself when the entry is deleted.
void grant(const QFileInfo &entry, QFile::Permissions access)
{
    const QFile::Permissions present = entry.permissions();
    if ((present & access) != access)
        QFile::setPermissions(entry.filePath(), present | access);
}

bool removeTree(const QString &path)
{
    grant(QFileInfo(path), directoryAccess);
    const QDir dir(path);
    const QFileInfoList entries =
        dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        bool removed = false;
        if (entry.isDir() && !entry.isSymLink()) {
            removed = removeTree(entry.filePath());
        } else {
            // Through a link the permissions of its target would change.
            if (!entry.isSymLink())
                grant(entry, fileAccess);
            removed = QFile::remove(entry.filePath());
        }
        if (!removed)
            return false;
    }
    return QDir().rmdir(path);
}

void removeEmptyParents(QString path)
{
    while (QFileInfo(path).fileName() != tempMarkerName()) {
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
    if (info.isSymLink())
        return QFile::remove(absolute);
    if (!info.exists())
        return true;
    if (!info.isDir() || !removeTree(absolute))
        return false;
    removeEmptyParents(absolute);
    return true;
}
