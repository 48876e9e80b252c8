// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Logs the user of the last run in again; made by the title bar's login control.
class AutoLogin : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns at once; the result comes as signals of UserInfoManager.
    void login();
};
