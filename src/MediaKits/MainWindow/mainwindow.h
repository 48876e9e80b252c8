// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <memory>

namespace Ui {
class MainWindow;
}
class AppTrayManager;
enum class ExitMode;
class WindowShadow;

/// The one top-level window: title bar and shell. A close hides it in the tray; the close button
/// asks first, or does what was answered earlier.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    /// Removes the temporary directory and then the pages with their running tasks. Notes where the
    /// window stands.
    ~MainWindow() override;

    /// Shows the window where it stood last, or in the middle, and in any case within reach.
    void open();

    /// Whether nothing runs, or the user agrees to end it.
    bool mayLeave();
    /// Saves what is worth keeping, for a program that is about to be ended by the system.
    void finishWork();
    /// Ends the program without asking.
    void leaveProgram();

public slots:
    void on_btnClose_clicked();
    void on_btnMax_clicked();
    void on_btnMin_clicked();
    void on_btnCService_clicked();
    void on_btnMore_clicked();
    /// A second start: brings the window to the front, at normal size.
    void sltMessageReceived(const QString &msg);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void connectRecorder();
    void offerRescued(const QStringList &files);
    void comeToFront();
    void takeKeyboard();
    void leave(ExitMode mode);
    void showWindowState();

    std::unique_ptr<Ui::MainWindow> m_ui;
    WindowShadow *m_shadow = nullptr;
    AppTrayManager *m_tray = nullptr;
};
