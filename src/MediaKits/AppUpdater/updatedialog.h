// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/AppUpdater/updaterecord.h"

#include <functional>
#include <memory>

namespace Ui {
class UpdateDialog;
}
class AppUpdater;

/// Tells of a newer version and offers to install it, by an UpdatingDialog in its place. Only tells
/// of it where the installation isn't the user's to change.
class UpdateDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// @param mayLeave asks whether the program may end for the update
    /// @param parent also that of the dialog that follows
    UpdateDialog(AppUpdater &updater, const UpdateRecord &record,
                 const std::function<bool()> &mayLeave, QWidget *parent = nullptr);
    ~UpdateDialog() override;

    /// Whether the package is ready and waits for the program's end.
    bool isInstalling() const { return m_isInstalling; }

private slots:
    void on_btnNoUpdate_clicked();
    void on_btnUpdate_clicked();

private:
    void forbidInstalling();

    const std::unique_ptr<Ui::UpdateDialog> m_form;
    AppUpdater &m_updater;
    const UpdateRecord m_record;
    const std::function<bool()> m_mayLeave;
    bool m_isInstalling = false;
};
