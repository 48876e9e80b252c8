// SPDX-License-Identifier: MIT
#include "platform/screensize.h"

#include "platform/linux/xconnection.h"

#include <QtGlobal>

QSize screenSizeInPixels()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return {0, 0};
    const XConnection connection;
    const xcb_screen_t *screen = connection.screen();
    return screen ? QSize(screen->width_in_pixels, screen->height_in_pixels) : QSize(0, 0);
}
