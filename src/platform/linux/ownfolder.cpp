// SPDX-License-Identifier: MIT
#include "platform/ownfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace {

// The lists of dpkg name folders, too, each in a line.
bool isListed(const QByteArray &folder)
{
    const QByteArray line = '\n' + folder + '\n';
    const QFileInfoList lists = QDir(QStringLiteral("/var/lib/dpkg/info"))
                                    .entryInfoList({QStringLiteral("*.list")}, QDir::Files);
    for (const QFileInfo &list : lists) {
        QFile file(list.filePath());
        if (file.open(QIODevice::ReadOnly) && ('\n' + file.readAll()).contains(line))
            return true;
    }
    return false;
}

// Other package managers are known by the place that is theirs by the standard of file systems.
bool belongsToPackageManager(const QString &folder)
{
    const bool isTheirPlace = folder.startsWith(QLatin1String("/usr/")) &&
                              !folder.startsWith(QLatin1String("/usr/local/"));
    return isTheirPlace || isListed(QFile::encodeName(folder));
}

} // namespace

bool isOwnFolder(const QString &folder)
{
    const QFileInfo info(folder);
    return info.isDir() && info.canonicalFilePath() == folder && info.ownerId() == ::geteuid() &&
           info.isWritable() && QFileInfo(info.absolutePath()).isWritable() &&
           (::geteuid() != 0 || !belongsToPackageManager(folder));
}
