// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>

#include <memory>
#include <optional>

/// Whether the pixels of the user's screen can be read.
enum class ScreenAccess {
    Open,
    None,    ///< no display answers
    Wayland, ///< a desktop that shows each program its own windows only
};

ScreenAccess screenAccess();

/// Size of a window without its frame in pixels; none for a window that isn't there.
/// @param window of the display server
std::optional<QSize> windowSize(quint32 window);

/// Whether there is something to see of a window, that isn't closed, minimised or on another
/// desktop.
bool isWindowViewable(quint32 window);

/// Has the display server keep the picture of a window apart from the screen while this lives, so
/// that it can be read where other windows or the screen's edge cover it. Without a compositor
/// there would be those other windows in it.
class WindowPicture
{
public:
    explicit WindowPicture(quint32 window);
    ~WindowPicture();
    WindowPicture(const WindowPicture &) = delete;
    WindowPicture &operator=(const WindowPicture &) = delete;

private:
    class Redirection;
    const std::unique_ptr<Redirection> m_redirection;
};

/// Path of the file that tells the screen source what to record, whether it is there or not.
QString captureSettingsPath();
