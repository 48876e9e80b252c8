// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/ScreenRecord/recordingrun.h"

#include <QObject>
#include <QSystemTrayIcon>

#include <functional>
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

    /// Shows by icon and menu where a recording of the screen stands.
    void showPhase(RecordingRun::Phase phase);
    /// @param time that has been recorded, for the tool tip
    void showClock(const QString &time);
    /// A word to the user, by a message of the tray.
    void tell(const QString &text);

signals:
    /// The menu's entries for a running recording were chosen.
    void pauseChosen();
    void stopChosen();
    /// The menu's entry for leaving was chosen.
    void leaveChosen();
    /// The user wants the window.
    void activated();

private:
    void addActions();
    QAction *addDialog(const QString &text, const std::function<void()> &run);
    void addRecordActions();
    void connectIcon();

    QWidget *m_window;
    QSystemTrayIcon *m_icon;
    std::unique_ptr<QMenu> m_menu;
    QAction *m_login = nullptr;
    QList<QAction *> m_recordActions; // pause, stop and the line below them
    RecordingRun::Phase m_phase = RecordingRun::Ready;
};
