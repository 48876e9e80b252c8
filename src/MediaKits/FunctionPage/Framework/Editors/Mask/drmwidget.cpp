// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"

#include <QMouseEvent>

#include <utility>

namespace {
constexpr int edgeWidth = 4;
constexpr double flattest = 0.2;
constexpr double steepest = 5.0;
constexpr int unbounded = 999999;
} // namespace

DrmWidget::DrmWidget(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
    setMouseTracking(true);
}

void DrmWidget::testHit(const QMouseEvent &event, bool pressed)
{
    const int edges = EdgeDrag::edgesAt(event.pos(), size(), edgeWidth);
    m_direction = (edges == 0 ? moveDirection : edges) & m_allowedDirections;
    // An edge that can't be pulled leaves nothing to do, so the arrow.
    setCursor(m_direction == 0 ? Qt::ArrowCursor
                               : EdgeDrag::cursorFor(m_direction & ~moveDirection, pressed));
}

QPoint DrmWidget::inParent(const QMouseEvent &event) const
{
    return mapToParent(event.pos());
}

QSize DrmWidget::bound() const
{
    return parentWidget() ? parentWidget()->size() : size();
}

void DrmWidget::mousePressEvent(QMouseEvent *event)
{
    emit mousePressed();
    const bool left = event->button() == Qt::LeftButton;
    if (left) {
        m_isHeld = true;
        m_pressed = geometry();
        m_pressOffset = inParent(*event) - m_pressed.topLeft();
    }
    testHit(*event, left);
}

void DrmWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isHeld || !(event->buttons() & Qt::LeftButton)) {
        testHit(*event, false);
        return;
    }
    const QPoint pointer = inParent(*event);
    if (m_direction == moveDirection)
        moveTo(pointer - m_pressOffset, event->modifiers().testFlag(Qt::AltModifier));
    else if (m_direction != 0)
        setGeometry(resized(pointer));
}

void DrmWidget::moveTo(const QPoint &place, bool freely)
{
    const QPoint inside = EdgeDrag::pushedInto(QRect(place, size()), bound());
    if (freely)
        emit snapped({});
    move(freely ? inside : caught(inside));
}

QPoint DrmWidget::caught(const QPoint &place)
{
    const QSize room = bound();
    const QPoint to(EdgeDrag::caught(place.x(), width(), room.width()),
                    EdgeDrag::caught(place.y(), height(), room.height()));
    QVector<QLine> guides;
    const int x = EdgeDrag::guide(to.x(), width(), room.width());
    const int y = EdgeDrag::guide(to.y(), height(), room.height());
    if (x >= 0)
        guides += QLine(x, 0, x, room.height() - 1);
    if (y >= 0)
        guides += QLine(0, y, room.width() - 1, y);
    emit snapped(guides);
    return to;
}

QRect DrmWidget::resized(const QPoint &pointer) const
{
    const QRect rect =
        EdgeDrag::clamped(EdgeDrag::stretched(m_pressed, m_direction, pointer), bound());
    if (m_aspect <= flattest || m_aspect >= steepest)
        return rect;
    const QSize room = parentWidget() ? bound() : QSize(unbounded, unbounded);
    return EdgeDrag::withAspect(rect, m_direction, m_aspect, room);
}

void DrmWidget::mouseReleaseEvent(QMouseEvent *event)
{
    testHit(*event, false);
    m_isHeld = false;
    emit mouseReleased();
}

// Nothing tells a hidden widget that the button was released.
void DrmWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (std::exchange(m_isHeld, false))
        emit mouseReleased();
}

void DrmWidget::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    // A resize that moves the upper left corner too is told of once, as a resize.
    if (geometry() == m_lastGeometry || size() != m_lastGeometry.size())
        return;
    m_lastGeometry = geometry();
    emit rectMoved(m_lastGeometry);
}

void DrmWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (geometry() == m_lastGeometry)
        return;
    m_lastGeometry = geometry();
    emit rectResized(m_lastGeometry);
}
