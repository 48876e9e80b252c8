// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QVector>
#include <qwindowdefs.h>

#include <optional>

/// A window of any program, as the display server has it.
struct SeenWindow
{
    WId id = 0;
    QRect area; ///< without the window manager's frame, native pixels of the whole desktop
};

/// The window that a user sees at a point: the deepest and topmost one there, the desktop itself
/// last. The frame of a window counts as that window. What is minimised or invisible, takes no
/// picture, lets the pointer through at that point, or is named in `ignored` doesn't count.
/// @param point native pixels of the whole desktop
/// @return nothing without an X display
std::optional<SeenWindow> windowAt(const QPoint &point, const QVector<WId> &ignored = {});

/// Whether a window is mapped, with all that it stands in, and not minimised.
/// @param window of the display server
bool isShownOnServer(WId window);
