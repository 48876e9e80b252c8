// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include <xcb/xcb.h>

/// A connection to the X server of our own, which needs no application object.
class XConnection
{
public:
    XConnection() : m_connection(xcb_connect(nullptr, &m_screen), &xcb_disconnect) {}

    /// False where there is no server; requests are then answered by nothing.
    bool isOpen() const { return xcb_connection_has_error(get()) == 0; }
    xcb_connection_t *get() const { return m_connection.get(); }
    int screenNumber() const { return m_screen; }

    /// The screen that the display's name chooses; null when the server has none.
    const xcb_screen_t *screen() const
    {
        if (!isOpen())
            return nullptr;
        xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(get()));
        for (int number = m_screen; number > 0 && it.rem > 1; --number)
            xcb_screen_next(&it);
        return it.rem > 0 ? it.data : nullptr;
    }

private:
    int m_screen = 0;
    // Never null: a failed connection is an object too.
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
};

struct XReplyDeleter
{
    void operator()(void *reply) const { std::free(reply); }
};
/// A reply that frees itself.
template<typename Reply>
using XReply = std::unique_ptr<Reply, XReplyDeleter>;

/// The number of a name; none on a broken connection.
inline xcb_atom_t atomOf(xcb_connection_t *connection, const std::string &name)
{
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, uint16_t(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}
