// SPDX-License-Identifier: MIT
#include "platform/compositor.h"

#include "platform/linux/xconnection.h"

#include <QByteArray>
#include <QGuiApplication>

namespace {

// The selection that the compositing manager of a screen owns.
class ManagerSelection
{
public:
    ManagerSelection()
    {
        const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(m_connection.screenNumber());
        const XReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            m_connection.get(),
            xcb_intern_atom(m_connection.get(), 0, uint16_t(name.size()), name.constData()),
            nullptr));
        if (atom)
            m_atom = atom->atom;
    }

    bool hasOwner() const
    {
        // The server tells of keyboard mappings unasked.
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        }
        // A broken connection answers nothing.
        const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            m_connection.get(), xcb_get_selection_owner(m_connection.get(), m_atom), nullptr));
        return owner && owner->owner != XCB_WINDOW_NONE;
    }

private:
    XConnection m_connection;
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
