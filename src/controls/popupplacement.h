// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

class QWidget;

/// Moves `popup`, at its adjusted size, below `anchor`, `gap` pixels from it. `horizontal` is
/// Qt::AlignLeft (left edges in line), Qt::AlignRight or Qt::AlignHCenter. The popup is shifted to
/// stay on the anchor's screen.
void placeBelow(QWidget *popup, const QWidget *anchor, Qt::Alignment horizontal, int gap);

/// The same above `anchor`.
void placeAbove(QWidget *popup, const QWidget *anchor, Qt::Alignment horizontal, int gap);
