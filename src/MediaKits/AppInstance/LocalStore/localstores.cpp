// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/localstores.h"

#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/persiststore.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"

void reloadStores()
{
    EncParamHistory::instance().load();
    FunctionSettings::instance().load();
    HistoryRecord::instance().load();
    PersistStore::instance().load();
    UserInfoStore::instance().load();
}

void saveStores()
{
    EncParamHistory::instance().save();
    FunctionSettings::instance().save();
    HistoryRecord::instance().save();
    PersistStore::instance().save();
}
