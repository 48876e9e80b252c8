// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

/// Size of the default screen in pixels, asked of the display server, so that no application
/// object is needed; 0 x 0 when there is no display.
QSize screenSizeInPixels();
