// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/updatesettings.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "platform/executable.h"
#include "platform/ownfolder.h"

#include <QFileInfo>

namespace {
constexpr char checkPath[] = "/svc/check/upgrade";
} // namespace

UpdateSettings UpdateSettings::ofProgram()
{
    const AppConfig &config = AppConfig::instance();
    return {config.serviceUpdate, config.serviceUpdateVerify != QLatin1String("off"), updateKey(),
            executablePath()};
}

QString UpdateSettings::installFolder() const
{
    return QFileInfo(program).absolutePath();
}

QString UpdateSettings::updater() const
{
    return installFolder() + QLatin1String("/updater");
}

bool UpdateSettings::isReplaceable() const
{
    return isOwnFolder(installFolder()) && QFileInfo(updater()).isExecutable();
}

QString UpdateSettings::checkUrl() const
{
    return QString::fromStdString(serviceUrl(host, checkPath)) +
           QStringLiteral("/%1/%2?code=%3").arg(appId(), platformName()).arg(appNumber());
}
