// SPDX-License-Identifier: MIT
#include "controls/correctplace.h"

#include "platform/windowmanager.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

void correctPlace(QWidget *window)
{
    const QWindow *handle = window->windowHandle();
    // A move would make it forget that it is large.
    if (handle->windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const auto native = placeOnServer(handle->winId());
    if (!native)
        return;
    const QPoint origin = handle->screen()->geometry().topLeft();
    const QPoint place = (*native - origin) / handle->devicePixelRatio() + origin;
    // A move to where it stands has it told again.
    if (place != window->geometry().topLeft())
        window->move(place);
}
