// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatehandshake.h"

#include <QFileInfo>

QString updateLockName(const QString &appCode)
{
    // The name alone is that of the running program's own lock.
    return appCode + QLatin1String("-update");
}

QString updateWorkFolder(const QString &installFolder)
{
    const QFileInfo folder(installFolder);
    return folder.absolutePath() + QLatin1String("/.") + folder.fileName() +
           QLatin1String("-update");
}
