// SPDX-License-Identifier: MIT
#include "platform/compositor.h"

#include "platform/linux/xconnection.h"

#include <QGuiApplication>

namespace {

// The selection that the compositing manager of a screen owns.
class ManagerSelection
{
public:
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
    xcb_atom_t m_atom =
        atomOf(m_connection.get(), "_NET_WM_CM_S" + std::to_string(m_connection.screenNumber()));
};

} // namespace

bool isCompositingActive()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return false;
    static const ManagerSelection selection;
    return selection.hasOwner();
}
