// SPDX-License-Identifier: MIT
#include "platform/temporaryroot.h"

#include "platform/openfolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

QString temporaryRoot()
{
    QString base = QFile::decodeName(qgetenv("XDG_CACHE_HOME"));
    if (!QDir::isAbsolutePath(base))
        base = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    const QString root = QDir::cleanPath(base + QStringLiteral("/MorvaneLocal"));
    const QString ownRoot = root + QLatin1Char('-') + userNumber();
    for (const QString &folder : {root, ownRoot}) {
        if (makePrivateFolder(folder))
            return folder;
    }
    // Somebody means to be in the way; nobody else can write here.
    const QString lastRoot = QDir::homePath() + QStringLiteral("/.cache/MorvaneLocal");
    makePrivateFolder(lastRoot);
    return lastRoot;
}
