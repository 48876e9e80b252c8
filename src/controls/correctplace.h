// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Tells a window where the window manager has put it; for calling when its native window is
/// exposed. While the window manager gives a new window its frame, Qt may ask for the place a
/// moment too early, and takes the window for one in the screen's corner from then on.
void correctPlace(QWidget *window);
