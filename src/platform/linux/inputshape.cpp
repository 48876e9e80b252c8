// SPDX-License-Identifier: MIT
#include "platform/inputshape.h"

#include <cstdlib>
#include <memory>

#include <xcb/shape.h>
#include <xcb/xcb.h>

void passPointerThrough(WId window)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        return;
    // Window managers copy the shape to their frame, but some take an empty one for none at all;
    // so one pixel stays.
    const xcb_rectangle_t pixel = {0, 0, 1, 1};
    const xcb_void_cookie_t request = xcb_shape_rectangles_checked(
        connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        xcb_window_t(window), 0, 0, 1, &pixel);
    std::free(xcb_request_check(connection.get(), request));
}
