// SPDX-License-Identifier: MIT
#include "platform/screensource.h"

#include "platform/linux/xconnection.h"

#include <QStandardPaths>

#include <xcb/composite.h>

ScreenAccess screenAccess()
{
    const bool isWayland =
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    if (isWayland)
        return ScreenAccess::Wayland;
    return XConnection().isOpen() ? ScreenAccess::Open : ScreenAccess::None;
}

std::optional<QSize> windowSize(quint32 window)
{
    const XConnection connection;
    if (!connection.isOpen())
        return std::nullopt;
    const XReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), window), nullptr));
    return reply ? std::make_optional(QSize(reply->width, reply->height)) : std::nullopt;
}

bool isWindowViewable(quint32 window)
{
    const XConnection connection;
    if (!connection.isOpen())
        return false;
    const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

// Ends with its connection to the server.
class WindowPicture::Redirection
{
public:
    explicit Redirection(quint32 window)
    {
        if (!m_connection.isOpen())
            return;
        xcb_connection_t *const connection = m_connection.get();
        const xcb_query_extension_reply_t *extension =
            xcb_get_extension_data(connection, &xcb_composite_id);
        if (extension == nullptr || extension->present == 0)
            return;
        const XReply<xcb_composite_query_version_reply_t> version(xcb_composite_query_version_reply(
            connection, xcb_composite_query_version(connection, 0, 4), nullptr));
        xcb_composite_redirect_window(connection, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        xcb_flush(connection);
    }

private:
    XConnection m_connection;
};

WindowPicture::WindowPicture(quint32 window) : m_redirection(std::make_unique<Redirection>(window))
{
}

WindowPicture::~WindowPicture() = default;

QString captureSettingsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/MorvaneScreenRecorder.conf");
}
