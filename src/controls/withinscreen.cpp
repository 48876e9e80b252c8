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
    if (window.minimumSizeHint().boundedTo(room) != window.minimumSizeHint())
        window.setMinimumSize(window.minimumSizeHint().boundedTo(room));
    window.resize(window.size().boundedTo(room));
}
