// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QWidget;

/// A rectangle as near to the wanted one as it can lie wholly inside an area, no larger than it.
QRect withinArea(const QRect &wanted, const QRect &area);

/// Makes a window, before it is shown, no larger than its screen has room for, its least size too.
void boundToScreen(QWidget &window);
