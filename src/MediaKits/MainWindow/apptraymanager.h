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

    /// Whether a hidden window can be brought back: on a desktop with a tray, from the start until
    /// the user leaves by the menu.
    bool isIconVisible() const;
    void hideIcon();

signals:
    /// The menu's entry for leaving was chosen.
    void leaveChosen();
    /// The user wants the window.
    void activated();

private:
    void addActions();
    void connectIcon();

    QWidget *m_window;
    QSystemTrayIcon *m_icon;
    std::unique_ptr<QMenu> m_menu;
    QAction *m_login = nullptr;
};
