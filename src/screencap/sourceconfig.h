// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

/// What the screen source is told before a recording, in a settings file of its own. The launcher
/// of ffmpeg reads it, see captureSettingsPath(). What changes it tells whether that is on the
/// disk.
namespace SourceConfig {

/// The even numbers below, which pictures need.
QSize evenSize(const QSize &size);
/// Removes every value that belongs to the source.
bool clear();
/// @param area in native pixels of the screen; a side is told as the even number below
bool writeArea(const QRect &area);
/// @param window of the display server
/// @param size of it in pixels, empty when it can't be told
bool writeWindow(quint32 window, const QSize &size);

} // namespace SourceConfig
