// SPDX-License-Identifier: MIT
#include "platform/screensize.h"

#include <QtGlobal>

#include <memory>

#include <xcb/xcb.h>

namespace {
struct ConnectionDeleter
{
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
} // namespace

QSize screenSizeInPixels()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return {0, 0};
    int number = 0;
    // Never null: a failed connection is an object too.
    const std::unique_ptr<xcb_connection_t, ConnectionDeleter> connection(
        xcb_connect(nullptr, &number));
    if (xcb_connection_has_error(connection.get()) != 0)
        return {0, 0};
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; number > 0 && screen.rem > 1; --number)
        xcb_screen_next(&screen);
    if (screen.rem == 0)
        return {0, 0};
    return {screen.data->width_in_pixels, screen.data->height_in_pixels};
}
