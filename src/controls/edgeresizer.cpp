// SPDX-License-Identifier: MIT
#include "controls/edgeresizer.h"

#include <QMouseEvent>
#include <QWindow>

Qt::CursorShape resizeCursor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    const bool isHorizontal = (edges & (Qt::LeftEdge | Qt::RightEdge)) != 0;
    return isHorizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

Qt::Edges edgesAt(const QRect &rect, const QPoint &pos, int border)
{
    Qt::Edges edges;
    if (!rect.contains(pos))
        return edges;
    if (pos.x() < rect.left() + border)
        edges |= Qt::LeftEdge;
    else if (pos.x() > rect.right() - border)
        edges |= Qt::RightEdge;
    if (pos.y() < rect.top() + border)
        edges |= Qt::TopEdge;
    else if (pos.y() > rect.bottom() - border)
        edges |= Qt::BottomEdge;
    return edges;
}

EdgeResizer::EdgeResizer(QWidget *window, int border)
    : QObject(window), m_window(window), m_border(border)
{
    window->installEventFilter(this);
    watchHandle();
}

// The native window sees the pointer also where children cover the edge.
void EdgeResizer::watchHandle()
{
    QWindow *handle = m_window->windowHandle();
    if (handle == nullptr || handle == m_handle)
        return;
    m_handle = handle;
    handle->installEventFilter(this);
}

bool EdgeResizer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        // Changed window flags make another native window.
        if (event->type() == QEvent::Show || event->type() == QEvent::WinIdChange)
            watchHandle();
    } else if (event->type() == QEvent::MouseMove) {
        const auto *move = static_cast<QMouseEvent *>(event);
        if (move->buttons() == Qt::NoButton)
            showCursor(move->pos());
    } else if (event->type() == QEvent::Leave) {
        m_hasCursor = false;
    } else if (event->type() == QEvent::MouseButtonPress) {
        const auto *press = static_cast<QMouseEvent *>(event);
        const Qt::Edges edges = activeEdges(press->pos());
        if (press->button() == Qt::LeftButton && edges != Qt::Edges())
            return m_handle->startSystemResize(edges);
    }
    return QObject::eventFilter(watched, event);
}

Qt::Edges EdgeResizer::activeEdges(const QPoint &pos) const
{
    const bool isFixed = m_window->minimumSize() == m_window->maximumSize();
    if (isFixed || m_window->isMaximized() || m_window->isFullScreen())
        return {};
    return edgesAt(m_window->rect(), pos, m_border);
}

void EdgeResizer::showCursor(const QPoint &pos)
{
    const Qt::Edges edges = activeEdges(pos);
    if (edges != Qt::Edges()) {
        m_handle->setCursor(resizeCursor(edges));
        m_hasCursor = true;
    } else if (m_hasCursor) {
        const QWidget *under = m_window->childAt(pos);
        m_handle->setCursor(under != nullptr ? under->cursor() : m_window->cursor());
        m_hasCursor = false;
    }
}
