// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/apptraymanager.h"

#include "browser/userinfomanager.h"
#include "controls/runmodal.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/loginentry.h"

#include <QApplication>
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

// They are in the menu while there is a recording.
void AppTrayManager::addRecordActions()
{
    auto *pause = new QAction(this);
    pause->setObjectName(QStringLiteral("actPause"));
    connect(pause, &QAction::triggered, this, &AppTrayManager::pauseChosen);
    auto *stop = new QAction(tr("停止录制"), this);
    stop->setObjectName(QStringLiteral("actStop"));
    connect(stop, &QAction::triggered, this, &AppTrayManager::stopChosen);
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    m_recordActions = {pause, stop, separator};
}

void AppTrayManager::showPhase(RecordingRun::Phase phase)
{
    m_phase = phase;
    const bool isPaused = phase == RecordingRun::Paused;
    const bool isOn = phase == RecordingRun::Recording || isPaused;
    for (QAction *action : m_recordActions)
        m_menu->removeAction(action);
    if (isOn)
        m_menu->insertActions(m_menu->actions().first(), m_recordActions);
    m_recordActions.first()->setText(isPaused ? tr("继续录制") : tr("暂停录制"));
    QString icon = QStringLiteral("logo");
    if (isOn)
        icon = isPaused ? QStringLiteral("tray_paused") : QStringLiteral("tray_recording");
    m_icon->setIcon(QIcon(QStringLiteral(":/drawable/%1.png").arg(icon)));
    m_icon->setToolTip(isPaused ? tr("墨泉影音工坊 录制已暂停") : tr("墨泉影音工坊"));
}

void AppTrayManager::showClock(const QString &time)
{
    if (m_phase == RecordingRun::Recording)
        m_icon->setToolTip(tr("墨泉影音工坊 正在录制 %1").arg(time));
}

void AppTrayManager::tell(const QString &text)
{
    m_icon->showMessage(tr("墨泉影音工坊"), text, QSystemTrayIcon::Warning);
}

void AppTrayManager::addActions()
{
    addRecordActions();
    m_login = addDialog(tr("登录/注册"), [this] {
        OskDataTracker::instance().trackTableEvent(loginPageView);
        runLogin(m_window);
    });
    addDialog(tr("关于"), [this] { runModal(new AboutMeDialog(m_window)); });
    m_menu->addSeparator();
    connect(m_menu->addAction(tr("退出")), &QAction::triggered, this, &AppTrayManager::leaveChosen);

    const UserInfoManager &user = UserInfoManager::instance();
    m_login->setVisible(!user.isLoggedIn());
    connect(&user, &UserInfoManager::loginStateChanged, m_login,
            [this](UserInfoManager::LoginState state) {
                m_login->setVisible(state != UserInfoManager::LoggedIn);
            });
}

// The window's dialogs keep nobody from the tray: one that is up comes to the front then.
QAction *AppTrayManager::addDialog(const QString &text, const std::function<void()> &run)
{
    QAction *entry = m_menu->addAction(text);
    connect(entry, &QAction::triggered, this, [run] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            run();
            return;
        }
        dialog->raise();
        dialog->activateWindow();
    });
    return entry;
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
