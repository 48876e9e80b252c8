// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include "platform/executable.h"
#include "platform/temporaryroot.h"
#include "platform/wordsize.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString created(const QString &path)
{
    QDir().mkpath(path);
    return path;
}

// What is kept for a while tells the names of the user's films: nobody else may look.
QString createdInTemporaryRoot(const QString &name)
{
    const QString root = temporaryRoot();
    if (QDir().mkpath(root))
        QFile::setPermissions(root, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return created(root + name);
}

} // namespace

QString appDir()
{
    static const QString dir = QFileInfo(executablePath()).absolutePath();
    return dir;
}

QString tempDir()
{
    return createdInTemporaryRoot(QStringLiteral("/Temp"));
}

QString dataDir()
{
    return created(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                   QStringLiteral("/MorvaneLocal/Data"));
}

QString logDir()
{
    return createdInTemporaryRoot(QStringLiteral("/Log"));
}

QString updateDir()
{
    return createdInTemporaryRoot(QStringLiteral("/update"));
}

QString appCode()
{
    return QStringLiteral("morvane");
}

QString appId()
{
    return QStringLiteral(MORVANE_APP_ID);
}

QString appVersion()
{
    return QStringLiteral(MORVANE_VERSION);
}

QString shortVersion()
{
    return appVersion().section(QLatin1Char('.'), 0, -2);
}

int appNumber()
{
    return 16;
}

QString platformName()
{
    return isWideSystem() ? QStringLiteral("pc_x64") : QStringLiteral("pc_x86");
}
