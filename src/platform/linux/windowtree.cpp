// SPDX-License-Identifier: MIT
#include "platform/windowtree.h"

#include "platform/linux/xconnection.h"

#include <QX11Info>

#include <algorithm>

#include <xcb/shape.h>

namespace {

// Longest list of windows or states that is read, in units of 4 bytes.
constexpr uint32_t mostEntries = 16 * 1024;
// A window manager puts a client into its frame directly or with one or two windows between.
constexpr int deepestFrame = 3;

using Ids = QVector<xcb_window_t>;

class Server
{
public:
    Server(xcb_connection_t *connection, const QPoint &point, const QVector<WId> &ignored)
        : m_connection(connection),
          m_root(xcb_window_t(QX11Info::appRootWindow())),
          m_point(point),
          m_ignored(ignored)
    {
        m_clients = listed(m_root, "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW);
    }

    std::optional<SeenWindow> seen() const;
    bool isShown(xcb_window_t window) const;

private:
    Ids listed(xcb_window_t window, const char *property, xcb_atom_t type) const;
    Ids childrenOf(xcb_window_t window) const;
    QVector<SeenWindow> childrenHere(const SeenWindow &parent) const;
    bool isTouched(const SeenWindow &window) const;
    bool hasShapeHere(const SeenWindow &window, xcb_shape_kind_t kind) const;
    xcb_window_t clientIn(xcb_window_t window, int depth = 0) const;
    std::optional<SeenWindow> clientOf(xcb_window_t client) const;
    SeenWindow deepestIn(SeenWindow window) const;

    xcb_connection_t *m_connection;
    const xcb_window_t m_root;
    const QPoint m_point;
    const QVector<WId> m_ignored;
    Ids m_clients;
};

Ids Server::listed(xcb_window_t window, const char *property, xcb_atom_t type) const
{
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, window, atomOf(m_connection, property), type, 0,
                         mostEntries),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    const int bytes = xcb_get_property_value_length(reply.get());
    return Ids(first, first + bytes / int(sizeof(uint32_t)));
}

// Topmost first.
Ids Server::childrenOf(xcb_window_t window) const
{
    const XReply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!reply)
        return {};
    const xcb_window_t *first = xcb_query_tree_children(reply.get());
    Ids children(first, first + xcb_query_tree_children_length(reply.get()));
    std::reverse(children.begin(), children.end());
    return children;
}

bool Server::hasShapeHere(const SeenWindow &window, xcb_shape_kind_t kind) const
{
    const XReply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        m_connection, xcb_shape_get_rectangles(m_connection, xcb_window_t(window.id), kind),
        nullptr));
    if (!reply)
        return false;
    const QPoint point = m_point - window.area.topLeft();
    const xcb_rectangle_t *first = xcb_shape_get_rectangles_rectangles(reply.get());
    return std::any_of(first, first + xcb_shape_get_rectangles_rectangles_length(reply.get()),
                       [&](const xcb_rectangle_t &part) {
                           return QRect(part.x, part.y, part.width, part.height).contains(point);
                       });
}

bool Server::isTouched(const SeenWindow &window) const
{
    return window.area.contains(m_point) && hasShapeHere(window, XCB_SHAPE_SK_BOUNDING) &&
           hasShapeHere(window, XCB_SHAPE_SK_INPUT);
}

// Those under the point, topmost first. All are asked about before the first answer is awaited.
QVector<SeenWindow> Server::childrenHere(const SeenWindow &parent) const
{
    struct Question
    {
        xcb_window_t id;
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
    };
    QVector<Question> questions;
    for (xcb_window_t id : childrenOf(xcb_window_t(parent.id))) {
        questions +=
            {id, xcb_get_window_attributes(m_connection, id), xcb_get_geometry(m_connection, id)};
    }
    QVector<SeenWindow> found;
    for (const Question &question : questions) {
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(m_connection, question.attributes, nullptr));
        const XReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(m_connection, question.geometry, nullptr));
        if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
            attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT || m_ignored.contains(question.id))
            continue;
        const QPoint border(geometry->border_width, geometry->border_width);
        const QPoint place = parent.area.topLeft() + QPoint(geometry->x, geometry->y) + border;
        found += {question.id, {place, QSize(geometry->width, geometry->height)}};
    }
    found.erase(std::remove_if(found.begin(), found.end(),
                               [this](const SeenWindow &window) { return !isTouched(window); }),
                found.end());
    return found;
}

// The program's window that a child of the root shows: itself or, in a frame, one below it.
xcb_window_t Server::clientIn(xcb_window_t window, int depth) const
{
    if (m_clients.contains(window))
        return window;
    if (depth == deepestFrame)
        return XCB_WINDOW_NONE;
    for (xcb_window_t child : childrenOf(window)) {
        if (const xcb_window_t client = clientIn(child, depth + 1))
            return client;
    }
    return XCB_WINDOW_NONE;
}

std::optional<SeenWindow> Server::clientOf(xcb_window_t client) const
{
    const auto placeQuestion = xcb_translate_coordinates(m_connection, client, m_root, 0, 0);
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, client), nullptr));
    const XReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_connection, placeQuestion, nullptr));
    if (!geometry || !place || !isShown(client) || m_ignored.contains(client))
        return std::nullopt;
    return SeenWindow{client,
                      {place->dst_x, place->dst_y, int(geometry->width), int(geometry->height)}};
}

SeenWindow Server::deepestIn(SeenWindow window) const
{
    while (true) {
        const QVector<SeenWindow> children = childrenHere(window);
        if (children.isEmpty())
            return window;
        window = children.first();
    }
}

std::optional<SeenWindow> Server::seen() const
{
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_root), nullptr));
    if (!size)
        return std::nullopt;
    const SeenWindow desktop{m_root, {0, 0, size->width, size->height}};
    for (const SeenWindow &top : childrenHere(desktop)) {
        const xcb_window_t id = clientIn(xcb_window_t(top.id));
        // Without one it is a window past the window manager, as a menu is.
        if (id == XCB_WINDOW_NONE || id == top.id)
            return deepestIn(top);
        if (const auto client = clientOf(id))
            return client->area.contains(m_point) ? deepestIn(*client) : *client;
    }
    return desktop;
}

bool Server::isShown(xcb_window_t window) const
{
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
           !listed(window, "_NET_WM_STATE", XCB_ATOM_ATOM)
                .contains(atomOf(m_connection, "_NET_WM_STATE_HIDDEN"));
}

} // namespace

std::optional<SeenWindow> windowAt(const QPoint &point, const QVector<WId> &ignored)
{
    if (!QX11Info::isPlatformX11())
        return std::nullopt;
    return Server(QX11Info::connection(), point, ignored).seen();
}

bool isShownOnServer(WId window)
{
    return QX11Info::isPlatformX11() &&
           Server(QX11Info::connection(), {}, {}).isShown(xcb_window_t(window));
}
