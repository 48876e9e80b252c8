// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QRectF;

/// Arithmetic of a rectangle that is dragged by its edges, in widget pixels.
namespace EdgeDrag {

/// Bits of a direction; none of them stands for the middle.
enum Edge { TopEdge = 1, BottomEdge = 2, LeftEdge = 4, RightEdge = 8 };

/// Which edges a point inside a widget of a size lies on, at most one each way. Where two opposite
/// edges are in reach, the top and the left come first.
/// @param grip how many pixels from an edge still count as on it
int edgesAt(const QPoint &point, const QSize &size, int grip);

/// Cursor over the edges; the middle's is that of a hand, closed while a button is down.
Qt::CursorShape cursorFor(int edges, bool pressed);

/// The rectangle whose edges follow the pointer: dragged across the opposite edge, it turns over.
/// @param pressed left, top, right and bottom as they were at the press
QRect stretched(const QRect &pressed, int edges, const QPoint &pointer);

/// The rectangle between two points.
QRect spanned(const QPoint &a, const QPoint &b);

/// The part of a rectangle inside (0, 0, width, height), edge by edge.
QRect clamped(const QRect &rect, const QSize &bound);

/// The place of a rectangle pushed back into the bound, the upper left first.
QPoint pushedInto(const QRect &rect, const QSize &bound);

/// Where something of a length stops that is moved inside a bound: near an end or the middle of the
/// bound it is caught there.
int caught(int place, int length, int bound);
/// The pixel of the bound that something of a length is caught by; -1 for none.
int guide(int place, int length, int bound);

/// A rectangle that has just been resized by its edges, with height = width * aspect. What the
/// bound has no room for makes it smaller.
QRect withAspect(const QRect &rect, int edges, double aspect, const QSize &bound);

/// A rectangle of doubles in rounded pixels.
QRect rounded(const QRectF &rect);

} // namespace EdgeDrag
