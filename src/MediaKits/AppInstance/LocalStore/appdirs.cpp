// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include "platform/executable.h"
#include "platform/openfolder.h"
#include "platform/temporaryroot.h"
#include "platform/wordsize.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace {

QStringList &refused()
{
    static QStringList folders;
    return folders;
}

bool isInTheWay(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

// The folders tell the names of the user's films and hold programs that are to be started: nobody
// else may look or write. What stands in the way is never used, and told once.
QString privateFolder(const QString &path)
{
    if (makePrivateFolder(path) || !isInTheWay(path))
        return path;
    if (!refused().contains(path))
        refused() += path;
    const QString other = path + QLatin1Char('-') + userNumber();
    if (makePrivateFolder(other))
        return other;
    const QString last = temporaryRoot() + QLatin1Char('/') + QFileInfo(other).fileName();
    // Where nothing can be made or written.
    return makePrivateFolder(last) ? last : QStringLiteral("/dev/null/MorvaneLocal");
}

QString inDataLocation(const QString &name)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QLatin1String("/MorvaneLocal/") + name;
}

} // namespace

QString appDir()
{
    static const QString dir = QFileInfo(executablePath()).absolutePath();
    return dir;
}

QString tempDir()
{
    return privateFolder(temporaryRoot() + QLatin1String("/Temp"));
}

QString dataDir()
{
    return privateFolder(inDataLocation(QStringLiteral("Data")));
}

QString logDir()
{
    return privateFolder(temporaryRoot() + QLatin1String("/Log"));
}

QString updateDir()
{
    // A package that was fetched is installed by the next start, which a new start of the computer
    // may lie before; and where things are kept for a while, programs often may not run.
    return privateFolder(inDataLocation(QStringLiteral("update")));
}

QStringList refusedDirs()
{
    return refused();
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
