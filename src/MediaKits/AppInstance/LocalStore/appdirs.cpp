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

QString createdForOwner(const QString &path)
{
    if (QDir().mkpath(path))
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

// What is kept for a while tells the names of the user's films: nobody else may look.
QString createdInTemporaryRoot(const QString &name)
{
    return created(createdForOwner(temporaryRoot()) + name);
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
    // A package that was fetched is installed by the next start, which a new start of the computer
    // may lie before; and where things are kept for a while, programs often may not run.
    return createdForOwner(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                           QStringLiteral("/MorvaneLocal/update"));
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
