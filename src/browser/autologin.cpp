// SPDX-License-Identifier: MIT
#include "browser/autologin.h"

#include "browser/userinfomanager.h"

void AutoLogin::login()
{
    UserInfoManager::instance().refreshUserInfo();
}
