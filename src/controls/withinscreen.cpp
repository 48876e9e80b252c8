// SPDX-License-Identifier: MIT
#include "controls/withinscreen.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

QRect withinArea(const QRect &wanted, const QRect &area)
{
    const QSize size = wanted.size().boundedTo(area.size());
    return {QPoint(std::clamp(wanted.x(), area.x(), area.x() + area.width() - size.width()),
                   std::clamp(wanted.y(), area.y(), area.y() + area.height() - size.height())),
            size};
}

void boundToScreen(QWidget &window)
{
    const QWidget *owner = window.parentWidget();
    const QSize room = (owner ? owner : &window)->screen()->availableGeometry().size();
    const QSize least = window.minimumSize().expandedTo(window.minimumSizeHint());
    if (least.boundedTo(room) != least)
        window.setMinimumSize(least.boundedTo(room));
    // One that nobody has sized yet takes the size of its content when it is shown.
    if (window.size().boundedTo(room) != window.size())
        window.resize(window.size().boundedTo(room));
}
