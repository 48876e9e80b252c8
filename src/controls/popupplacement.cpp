// SPDX-License-Identifier: MIT
#include "controls/popupplacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

int leftFor(const QRect &anchor, int width, Qt::Alignment horizontal)
{
    if (horizontal.testFlag(Qt::AlignRight))
        return anchor.left() + anchor.width() - width;
    if (horizontal.testFlag(Qt::AlignHCenter))
        return anchor.left() + (anchor.width() - width) / 2;
    return anchor.left();
}

QRect availableAround(const QWidget *anchor, const QRect &global)
{
    const QScreen *screen = QGuiApplication::screenAt(global.center());
    if (screen == nullptr)
        screen = anchor->window()->windowHandle() != nullptr
                     ? anchor->window()->windowHandle()->screen()
                     : QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->availableGeometry() : global;
}

// The left or top edge wins when the popup is larger than the screen.
int within(int position, int size, int low, int length)
{
    return std::max(low, std::min(position, low + length - size));
}

void place(QWidget *popup, const QWidget *anchor, Qt::Alignment horizontal, int gap, bool below)
{
    popup->adjustSize();
    const QRect global(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    const int top =
        below ? global.top() + global.height() + gap : global.top() - gap - popup->height();
    const QRect screen = availableAround(anchor, global);
    popup->move(within(leftFor(global, popup->width(), horizontal), popup->width(), screen.left(),
                       screen.width()),
                within(top, popup->height(), screen.top(), screen.height()));
}

} // namespace

void placeBelow(QWidget *popup, const QWidget *anchor, Qt::Alignment horizontal, int gap)
{
    place(popup, anchor, horizontal, gap, true);
}

void placeAbove(QWidget *popup, const QWidget *anchor, Qt::Alignment horizontal, int gap)
{
    place(popup, anchor, horizontal, gap, false);
}
