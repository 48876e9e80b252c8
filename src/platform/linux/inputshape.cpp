// SPDX-License-Identifier: MIT
#include "platform/inputshape.h"

#include "platform/linux/xconnection.h"

#include <xcb/shape.h>

void passPointerThrough(WId window)
{
    const XConnection connection;
    if (!connection.isOpen())
        return;
    // Window managers copy the shape to their frame, but some take an empty one for none at all;
    // so one pixel stays.
    const xcb_rectangle_t pixel = {0, 0, 1, 1};
    const xcb_void_cookie_t request = xcb_shape_rectangles_checked(
        connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        xcb_window_t(window), 0, 0, 1, &pixel);
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection.get(), request));
}

void catchPointer(WId window)
{
    const XConnection connection;
    if (!connection.isOpen())
        return;
    const xcb_void_cookie_t request =
        xcb_shape_mask_checked(connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                               xcb_window_t(window), 0, 0, XCB_PIXMAP_NONE);
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection.get(), request));
}
