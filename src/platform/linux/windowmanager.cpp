// SPDX-License-Identifier: MIT
#include "platform/windowmanager.h"

#include "platform/linux/xconnection.h"

#include <QX11Info>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr uint32_t allDesktops = 0xffffffff;

// A request about a window goes to the root window, where the window manager listens.
void ask(WId window, const char *request, const std::array<uint32_t, 4> &data)
{
    xcb_connection_t *connection = QX11Info::connection();
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window);
    message.type = atomOf(connection, request);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection, 0, xcb_window_t(QX11Info::appRootWindow()),
                   XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

std::optional<uint32_t> cardinal(xcb_window_t window, const char *property)
{
    xcb_connection_t *connection = QX11Info::connection();
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0, window, atomOf(connection, property),
                                                XCB_ATOM_CARDINAL, 0, 1),
                               nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < int(sizeof(uint32_t)))
        return std::nullopt;
    return *static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
}

} // namespace

void noteUserAction()
{
    if (!QX11Info::isPlatformX11())
        return;
    const unsigned long now = QX11Info::getTimestamp();
    QX11Info::setAppTime(now);
    QX11Info::setAppUserTime(now);
}

void bringToCurrentDesktop(WId window)
{
    if (!QX11Info::isPlatformX11())
        return;
    constexpr uint32_t byTheUser = 2;
    const auto current = cardinal(xcb_window_t(QX11Info::appRootWindow()), "_NET_CURRENT_DESKTOP");
    const auto own = cardinal(xcb_window_t(window), "_NET_WM_DESKTOP");
    if (current && own && *own != allDesktops && *own != *current)
        ask(window, "_NET_WM_DESKTOP", {*current, byTheUser});
}

bool hasInputFocus(WId window)
{
    if (!QX11Info::isPlatformX11())
        return true;
    xcb_connection_t *connection = QX11Info::connection();
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return !reply || reply->focus == xcb_window_t(window);
}

std::optional<QPoint> placeOnServer(WId window)
{
    if (!QX11Info::isPlatformX11())
        return std::nullopt;
    xcb_connection_t *connection = QX11Info::connection();
    const XReply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
        connection,
        xcb_translate_coordinates(connection, xcb_window_t(window),
                                  xcb_window_t(QX11Info::appRootWindow()), 0, 0),
        nullptr));
    if (!reply)
        return std::nullopt;
    return QPoint(reply->dst_x, reply->dst_y);
}

void removeModalState(WId window)
{
    constexpr uint32_t remove = 0;
    constexpr uint32_t byAnApplication = 1;
    if (QX11Info::isPlatformX11())
        ask(window, "_NET_WM_STATE",
            {remove, atomOf(QX11Info::connection(), "_NET_WM_STATE_MODAL"), 0, byAnApplication});
}

void spanDesktop(WId window)
{
    if (!QX11Info::isPlatformX11())
        return;
    xcb_connection_t *connection = QX11Info::connection();
    const XReply<xcb_get_geometry_reply_t> desktop(xcb_get_geometry_reply(
        connection, xcb_get_geometry(connection, xcb_window_t(QX11Info::appRootWindow())),
        nullptr));
    if (!desktop)
        return;
    const uint32_t values[] = {0, 0, desktop->width, desktop->height};
    xcb_configure_window(connection, xcb_window_t(window),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    xcb_flush(connection);
}
