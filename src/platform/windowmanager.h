// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <qwindowdefs.h>

#include <optional>

/// Tells the window manager that the user has acted just now, as by a second start: otherwise it
/// may leave a window in the background that asks for the front.
void noteUserAction();

/// Moves a window to the desktop that the user looks at, where it differs: some window managers
/// never change the desktop for a window that asks for the front.
/// @param window of the display server
void bringToCurrentDesktop(WId window);

/// Whether the display server sends keys to the window.
/// @param window of the display server
bool hasInputFocus(WId window);

/// Where a window stands on the desktop, as the display server has it: the window system's events
/// may have told an earlier place last. Native pixels; none when it can't be told.
/// @param window of the display server
std::optional<QPoint> placeOnServer(WId window);

/// Has the window manager forget that a mapped window is modal, which some stack above its own
/// tool windows. For Qt it stays modal.
/// @param window of the display server
void removeModalState(WId window);

/// Makes a window that the window manager leaves alone as large as all screens together.
/// @param window of the display server
void spanDesktop(WId window);
