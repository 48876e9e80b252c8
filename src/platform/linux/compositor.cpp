// SPDX-License-Identifier: MIT
#include "platform/compositor.h"

#include <QByteArray>
#include <QGuiApplication>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace {

struct Disconnect
{
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
struct Free
{
    void operator()(void *reply) const { std::free(reply); }
};
template<typename Reply>
using ReplyPtr = std::unique_ptr<Reply, Free>;

// The selection that the compositing manager of a screen owns. On a connection of our own: that of
// the application is out of reach without private headers.
class ManagerSelection
{
public:
    ManagerSelection() : m_connection(xcb_connect(nullptr, &m_screen))
    {
        const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(m_screen);
        const ReplyPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            m_connection.get(),
            xcb_intern_atom(m_connection.get(), 0, uint16_t(name.size()), name.constData()),
            nullptr));
        if (atom)
            m_atom = atom->atom;
    }

    bool hasOwner() const
    {
        // The server tells of keyboard mappings unasked.
        while (const ReplyPtr<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        }
        // A broken connection answers nothing.
        const ReplyPtr<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            m_connection.get(), xcb_get_selection_owner(m_connection.get(), m_atom), nullptr));
        return owner && owner->owner != XCB_WINDOW_NONE;
    }

private:
    int m_screen = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_atom_t m_atom = XCB_ATOM_NONE;
};

} // namespace

bool isCompositingActive()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return false;
    static const ManagerSelection selection;
    return selection.hasOwner();
}
