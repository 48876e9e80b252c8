// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QWidget;

/// A rectangle as near to the wanted one as it can lie wholly inside an area, no larger than it.
QRect withinArea(const QRect &wanted, const QRect &area);

/// The main window's place on the desktop, which is remembered in app.ini.
namespace WindowPlace {

/// Moves the window, before it is shown, to where it stood last, on the screen where most of it is
/// to be seen, or else to the middle of the primary one; sets its least size to what that screen
/// has room for.
void restore(QWidget &window);
void store(const QWidget &window);

} // namespace WindowPlace
