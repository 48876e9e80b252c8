// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/apptraymanager.h"

#include "browser/userinfomanager.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/loginentry.h"

#include <QMenu>

namespace {

constexpr int loginPageView = 5;

} // namespace

AppTrayManager::AppTrayManager(QWidget *window)
    : QObject(window),
      m_window(window),
      m_icon(new QSystemTrayIcon(QIcon(QStringLiteral(":/drawable/logo.png")), this)),
      m_menu(std::make_unique<QMenu>())
{
    m_icon->setToolTip(tr("墨泉影音工坊"));
    addActions();
    m_icon->setContextMenu(m_menu.get());
    connectIcon();
    m_icon->show();
}

AppTrayManager::~AppTrayManager() = default;

bool AppTrayManager::isIconVisible() const
{
    return m_icon->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

void AppTrayManager::addActions()
{
    m_login = m_menu->addAction(tr("登录/注册"));
    connect(m_login, &QAction::triggered, this, [this] {
        OskDataTracker::instance().trackTableEvent(loginPageView);
        runLogin(m_window);
    });
    connect(m_menu->addAction(tr("关于")), &QAction::triggered, this,
            [this] { AboutMeDialog(m_window).exec(); });
    m_menu->addSeparator();
    connect(m_menu->addAction(tr("退出")), &QAction::triggered, this, &AppTrayManager::leaveChosen);

    const UserInfoManager &user = UserInfoManager::instance();
    m_login->setVisible(!user.isLoggedIn());
    connect(&user, &UserInfoManager::loginStateChanged, m_login,
            [this](UserInfoManager::LoginState state) {
                m_login->setVisible(state != UserInfoManager::LoggedIn);
            });
}

void AppTrayManager::connectIcon()
{
    connect(m_icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    emit activated();
            });
    connect(m_icon, &QSystemTrayIcon::messageClicked, this, &AppTrayManager::activated);
}

void AppTrayManager::hideIcon()
{
    m_icon->hide();
}
