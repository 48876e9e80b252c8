// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

namespace Ui {
class ExitTipsDialog;
}

/// What the close button of the main window does; the numbers are those of app.ini.
enum class ExitMode {
    ToTray = 0,
    Leave = 1,
};

/// Asks whether to leave the program or to hide it in the tray, and stores the answer.
class ExitTipsDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit ExitTipsDialog(QWidget *parent = nullptr);
    ~ExitTipsDialog() override;

    /// What was chosen; meaningful when the dialog was accepted.
    ExitMode mode() const { return m_mode; }

private slots:
    void on_btnEixt_clicked();
    void on_btnToTray_clicked();

private:
    void choose(ExitMode mode);

    std::unique_ptr<Ui::ExitTipsDialog> m_ui;
    ExitMode m_mode = ExitMode::ToTray;
};
