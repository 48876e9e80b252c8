// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"

#include "controls/edgeresizer.h"

#include <QRectF>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace EdgeDrag {

namespace {

constexpr std::pair<Edge, Qt::Edge> directions[] = {{TopEdge, Qt::TopEdge},
                                                    {BottomEdge, Qt::BottomEdge},
                                                    {LeftEdge, Qt::LeftEdge},
                                                    {RightEdge, Qt::RightEdge}};

// Widget pixels.
constexpr int catchDistance = 6;

} // namespace

int edgesAt(const QPoint &point, const QSize &size, int grip)
{
    const Qt::Edges found = ::edgesAt(QRect(QPoint(), size), point, grip);
    int edges = 0;
    for (const auto &[bit, edge] : directions)
        edges |= found.testFlag(edge) ? bit : 0;
    return edges;
}

Qt::CursorShape cursorFor(int edges, bool pressed)
{
    Qt::Edges shown;
    for (const auto &[bit, edge] : directions)
        shown.setFlag(edge, edges & bit);
    if (shown == Qt::Edges())
        return pressed ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
    return resizeCursor(shown);
}

QRect spanned(const QPoint &a, const QPoint &b)
{
    return {QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
            QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y()))};
}

QRect stretched(const QRect &pressed, int edges, const QPoint &pointer)
{
    QPoint from = pressed.topLeft();
    QPoint to = pressed.bottomRight();
    if (edges & TopEdge)
        from.setY(pointer.y());
    else if (edges & BottomEdge)
        to.setY(pointer.y());
    if (edges & LeftEdge)
        from.setX(pointer.x());
    else if (edges & RightEdge)
        to.setX(pointer.x());
    return spanned(from, to);
}

QRect clamped(const QRect &rect, const QSize &bound)
{
    return {QPoint(std::max(rect.left(), 0), std::max(rect.top(), 0)),
            QPoint(std::min(rect.right(), bound.width() - 1),
                   std::min(rect.bottom(), bound.height() - 1))};
}

QPoint pushedInto(const QRect &rect, const QSize &bound)
{
    return {std::min(std::max(rect.left(), 0), bound.width() - rect.width()),
            std::min(std::max(rect.top(), 0), bound.height() - rect.height())};
}

int caught(int place, int length, int bound)
{
    for (const int stop : {0, bound - length, (bound - length) / 2}) {
        if (std::abs(place - stop) <= catchDistance)
            return stop;
    }
    return place;
}

int guide(int place, int length, int bound)
{
    if (place == 0)
        return 0;
    if (place == bound - length)
        return bound - 1;
    return place == (bound - length) / 2 ? bound / 2 : -1;
}

QRect withAspect(const QRect &rect, int edges, double aspect, const QSize &bound)
{
    int left = rect.left();
    int top = rect.top();
    int right = rect.right();
    int bottom = rect.bottom();
    switch (edges) {
    case LeftEdge: // hangs on its top
        bottom = top + int(rect.width() * aspect);
        if (bottom >= bound.height()) {
            bottom = bound.height();
            left = int(right - (bottom - top) / aspect);
        }
        break;
    case RightEdge: // stands on its bottom
        top = bottom - int(rect.width() * aspect);
        if (top < 0) {
            top = 0;
            right = int(left + bottom / aspect);
        }
        break;
    case BottomEdge:
    case TopEdge | LeftEdge:
    case BottomEdge | LeftEdge:
        left = right - int(rect.height() / aspect);
        if (left < 0) {
            left = 0;
            bottom = int(aspect * right + top);
        }
        break;
    default:
        right = left + int(rect.height() / aspect);
        if (right > bound.width()) {
            right = bound.width();
            top = int(bottom - aspect * (right - left));
        }
        break;
    }
    return {QPoint(left, top), QPoint(right, bottom)};
}

QRect rounded(const QRectF &rect)
{
    return {qRound(rect.x()), qRound(rect.y()), qRound(rect.width()), qRound(rect.height())};
}

} // namespace EdgeDrag
