// SPDX-License-Identifier: MIT
#include "platform/displaysizes.h"

#include "platform/linux/xconnection.h"

#include <QList>

#include <atomic>

#include <xcb/randr.h>

namespace {

constexpr double plainDpi = 96.0;
constexpr char dpiResource[] = "Xft.dpi:";
// In units of 4 bytes; a desktop's resources take a few kilobytes.
constexpr uint32_t maxResourceLength = 64 * 1024;

std::atomic<DpiStance> declaredStance{DpiStance::Unaware};

bool hasMonitors(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const XReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        connection, xcb_randr_query_version(connection, 1, 5), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

// The first display when none is the primary one; the whole screen on an old server.
QSize primarySize(xcb_connection_t *connection, const xcb_screen_t &screen)
{
    const QSize whole(screen.width_in_pixels, screen.height_in_pixels);
    if (!hasMonitors(connection))
        return whole;
    const XReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        connection, xcb_randr_get_monitors(connection, screen.root, 1), nullptr));
    if (!reply)
        return whole;
    QSize size;
    auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; monitor.rem > 0; xcb_randr_monitor_info_next(&monitor)) {
        if (size.isEmpty() || monitor.data->primary != 0)
            size = {monitor.data->width, monitor.data->height};
    }
    return size.isEmpty() ? whole : size;
}

QByteArray resourcesOf(xcb_connection_t *connection, const xcb_screen_t &screen)
{
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, screen.root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0,
                         maxResourceLength),
        nullptr));
    if (!reply)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

} // namespace

void declareDpiStance(DpiStance stance)
{
    declaredStance = stance;
}

DisplaySizes primaryDisplaySizes()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return {{0, 0}, {0, 0}};
    const XConnection connection;
    const xcb_screen_t *screen = connection.screen();
    if (screen == nullptr)
        return {{0, 0}, {0, 0}};
    const QSize real = primarySize(connection.get(), *screen);
    if (declaredStance == DpiStance::Aware)
        return {real, real};
    const double wanted = scaleOfUser();
    return {real, real / (wanted > 0.0 ? wanted
                                       : scaleInResources(resourcesOf(connection.get(), *screen)))};
}

double scaleOfUser()
{
    const double scale = qgetenv("QT_SCALE_FACTOR").toDouble();
    return scale > 0.0 ? scale : 0.0;
}

double scaleInResources(const QByteArray &resources)
{
    for (const QByteArray &line : resources.split('\n')) {
        if (!line.startsWith(dpiResource))
            continue;
        const double dpi = line.mid(int(sizeof dpiResource) - 1).trimmed().toDouble();
        // Out of these bounds it is a slip of the pen.
        return dpi >= plainDpi / 4 && dpi <= plainDpi * 10 ? dpi / plainDpi : 1.0;
    }
    return 1.0;
}
