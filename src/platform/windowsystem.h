// SPDX-License-Identifier: MIT
#pragma once

/// Has Qt open its windows on X11, also in a Wayland session, as the external player draws into a
/// window by its X11 id; and without OpenGL, which no window of ours draws with and which takes
/// half of a start's time and memory to load. What the user names in QT_QPA_PLATFORM and
/// QT_XCB_GL_INTEGRATION stands. Before the application object exists.
void chooseWindowSystem();
