// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPointer>

#include <optional>

/// Runs a modal dialog and deletes it. Its parent may go while it runs, and the dialog with it.
/// @param result makes something of the dialog once it was accepted
/// @return nothing when the user cancelled or the dialog has gone; the caller may be gone, too,
/// then
template<class Dialog, class Result>
auto runModal(Dialog *made, const Result &result) -> std::optional<decltype(result(*made))>
{
    const QPointer<Dialog> dialog = made;
    std::optional<decltype(result(*made))> taken;
    if (dialog->exec() == QDialog::Accepted && dialog)
        taken = result(*dialog);
    delete dialog.data();
    return taken;
}

/// The same of a dialog that has nothing to give; true when it was accepted.
inline bool runModal(QDialog *made)
{
    return runModal(made, [](QDialog &) { return true; }).has_value();
}
