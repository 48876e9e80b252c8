// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

class QAction;
class QMenu;

/// The tray icon with its menu, by which a hidden window comes back and the program ends.
class AppTrayManager : public QObject
{
    Q_OBJECT

public:
    /// @param window the main window; outlives this object
    explicit AppTrayManager(QWidget *window);
    ~AppTrayManager() override;

    /// True from the start, also on a desktop without a tray, until the user leaves by the menu.
    bool isIconVisible() const { return m_icon->isVisible(); }

private:
    void addActions();
    void connectIcon();
    void showWindow();
    void leave();

    QWidget *m_window;
    QSystemTrayIcon *m_icon;
    std::unique_ptr<QMenu> m_menu;
    QAction *m_login = nullptr;
};
