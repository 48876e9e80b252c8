// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The main window's place on the desktop, which is remembered in app.ini.
namespace WindowPlace {

/// Moves the window, before it is shown, to where it stood last, on the screen where most of it is
/// to be seen, or else to the middle of the primary one; sets its least size to what that screen
/// has room for.
void restore(QWidget &window);
void store(const QWidget &window);

} // namespace WindowPlace
