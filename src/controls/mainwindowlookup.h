// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The program's main window, for code that has no pointer to it: parent of dialogs and messages.
/// Null while there is none.
QWidget *mainWindow();
