// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/appupdater.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/Logger/logger.h"

AppUpdater &AppUpdater::instance()
{
    static AppUpdater updater;
    return updater;
}

bool AppUpdater::run()
{
    if (!AppConfig::instance().serviceUpdate.isEmpty())
        CLOG(INFO, "default") << "此版本还没有内置升级功能，不检查新版本";
    return false;
}
