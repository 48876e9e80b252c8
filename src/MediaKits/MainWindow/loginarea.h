// SPDX-License-Identifier: MIT
#pragma once

#include "browser/userinfomanager.h"

#include <QWidget>

class ElidedLabel;
class QPushButton;

/// The title bar's login control: the way to the login, or the name of the user.
class LoginArea : public QWidget
{
    Q_OBJECT

public:
    explicit LoginArea(QWidget *parent = nullptr);

private:
    void onLoginStateChanged(UserInfoManager::LoginState state);
    void showUser();

    QPushButton *m_button;
    ElidedLabel *m_name;
};
