// SPDX-License-Identifier: MIT
#pragma once

#include <qwindowdefs.h>

/// Lets the pointer through a window that is only to be looked at, whatever frame the window
/// manager gives it. For the time that the native window lives; to be called once it is mapped.
/// @param window of the display server
void passPointerThrough(WId window);

/// Undoes that: the pointer stops at the window again.
/// @param window of the display server
void catchPointer(WId window);
