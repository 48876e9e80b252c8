// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatehandshake.h"

#include <QFile>
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

QString updateOtherFolder(const QString &installFolder)
{
    return updateWorkFolder(installFolder) + QLatin1String("/other");
}

QString updateTrialNote(const QString &installFolder)
{
    return installFolder + QLatin1String("/.update-trial");
}

bool isUpdateOnTrial(const QString &installFolder)
{
    return QFileInfo(updateTrialNote(installFolder)).isFile() &&
           QFileInfo(updateOtherFolder(installFolder)).isDir();
}

bool beginUpdateTrial(const QString &installFolder)
{
    QFile note(updateTrialNote(installFolder));
    if (!isUpdateOnTrial(installFolder) || !note.open(QIODevice::Append))
        return false;
    const bool wasTried = note.size() > 0;
    note.write("started\n");
    return wasTried;
}
