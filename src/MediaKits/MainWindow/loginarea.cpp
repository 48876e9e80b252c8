// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/loginarea.h"

#include "browser/autologin.h"
#include "controls/elidedlabel.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/MainWindow/loginentry.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVariant>

namespace {

constexpr int longestName = 160;

} // namespace

LoginArea::LoginArea(QWidget *parent)
    : QWidget(parent),
      m_button(new QPushButton(tr("登录/注册"), this)),
      m_name(new ElidedLabel(this))
{
    m_button->setObjectName(QStringLiteral("btnLogin"));
    m_button->setProperty("cls", QStringLiteral("link"));
    m_name->setObjectName(QStringLiteral("lblUser"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 8, 0);
    row->addWidget(m_button);
    row->addWidget(m_name);
    showUser();

    connect(m_button, &QPushButton::clicked, this, [this] { runLogin(window()); });
    const UserInfoManager &user = UserInfoManager::instance();
    connect(&user, &UserInfoManager::loginStateChanged, this, &LoginArea::onLoginStateChanged);
    connect(&user, &UserInfoManager::userInfoChanged, this, &LoginArea::showUser);
    (new AutoLogin(this))->login();
}

void LoginArea::onLoginStateChanged(UserInfoManager::LoginState state)
{
    if (state == UserInfoManager::LoggedIn)
        OskDataTracker::instance().trackLogin();
    showUser();
}

void LoginArea::showUser()
{
    const UserInfoManager &user = UserInfoManager::instance();
    // A user without a name has still logged in.
    const QString name = user.name().isEmpty() ? tr("已登录") : user.name();
    m_name->setFullText(name);
    // An elided label has no wish of its own for the whole name.
    m_name->setFixedWidth(qMin(longestName, m_name->fontMetrics().horizontalAdvance(name) + 4));
    m_button->setVisible(!user.isLoggedIn());
    m_name->setVisible(user.isLoggedIn());
}
