// SPDX-License-Identifier: MIT
#include "controls/interceptslider.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>

InterceptSlider::InterceptSlider(Qt::Orientation orientation, QWidget *parent)
    : QSlider(orientation, parent),
      m_leftHandle(makeHandle(QStringLiteral("leftslider"))),
      m_rightHandle(makeHandle(QStringLiteral("rightslider")))
{
}

InterceptSlider::InterceptSlider(QWidget *parent) : InterceptSlider(Qt::Horizontal, parent) {}

QLabel *InterceptSlider::makeHandle(const QString &name)
{
    auto *handle = new QLabel(this);
    handle->setObjectName(name);
    handle->setCursor(Qt::PointingHandCursor);
    return handle;
}

void InterceptSlider::setLeftValue(int value)
{
    m_leftValue = std::clamp(value, minimum(), maximum());
    placeHandle(m_leftHandle, m_leftValue);
    update();
}

void InterceptSlider::setRightValue(int value)
{
    m_rightValue = std::clamp(value, minimum(), maximum());
    placeHandle(m_rightHandle, m_rightValue);
    update();
}

void InterceptSlider::setRangeVisible(bool handles, bool span)
{
    m_leftHandle->setVisible(handles);
    m_rightHandle->setVisible(handles);
    m_spanVisible = span;
    update();
}

void InterceptSlider::setSpanColor(const QColor &colour)
{
    m_spanColor = colour;
    update();
}

QRect InterceptSlider::groove() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
}

int InterceptSlider::valueAt(int grooveX) const
{
    return QStyle::sliderValueFromPosition(minimum(), maximum(), grooveX, groove().width(), false);
}

void InterceptSlider::placeHandle(QLabel *handle, int value)
{
    // The style sheet gives the handles their size.
    handle->ensurePolished();
    const QRect rail = groove();
    int x = rail.left() +
            QStyle::sliderPositionFromValue(minimum(), maximum(), value, rail.width(), false);
    if (handle == m_leftHandle)
        x -= handle->width();
    handle->move(x, rail.top() + rail.height() / 2 - handle->height() / 2 + m_hshifting);
}

void InterceptSlider::placeHandles()
{
    placeHandle(m_leftHandle, m_leftValue);
    placeHandle(m_rightHandle, m_rightValue);
}

void InterceptSlider::showEvent(QShowEvent *event)
{
    QSlider::showEvent(event);
    placeHandles();
}

// A handle stands for its value, however wide the time line is.
void InterceptSlider::resizeEvent(QResizeEvent *event)
{
    QSlider::resizeEvent(event);
    placeHandles();
}

void InterceptSlider::sliderChange(SliderChange change)
{
    QSlider::sliderChange(change);
    if (change == SliderRangeChange)
        placeHandles();
}

void InterceptSlider::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    QPainter painter(this);
    if (m_spanVisible) {
        const QRect rail = groove();
        const int left = m_leftHandle->x() + m_leftHandle->width();
        painter.setPen(Qt::NoPen);
        painter.setBrush(QBrush(m_spanColor, Qt::SolidPattern));
        painter.drawRect(
            QRect(QPoint(left, rail.top()), QPoint(m_rightHandle->x() - 1, rail.bottom())));
    }
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_SliderHandle;
    style()->drawComplexControl(QStyle::CC_Slider, &option, &painter, this);
}

void InterceptSlider::mousePressEvent(QMouseEvent *event)
{
    m_lastGlobal = event->screenPos().toPoint();
    if (event->button() == Qt::LeftButton) {
        const auto isHit = [event](const QLabel *handle) {
            return handle->isVisible() && handle->geometry().contains(event->pos());
        };
        if (isHit(m_leftHandle)) {
            m_dragHandle = LeftHandle;
            return;
        }
        if (isHit(m_rightHandle)) {
            m_dragHandle = RightHandle;
            return;
        }
    }
    const int value = valueAt(event->pos().x() - groove().left());
    setValue(value);
    emit sliderMoved(value);
    m_dragHandle = NoHandle;
    QSlider::mousePressEvent(event);
}

void InterceptSlider::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint global = event->screenPos().toPoint();
    const int distance = global.x() - m_lastGlobal.x();
    if (m_dragHandle == NoHandle)
        QSlider::mouseMoveEvent(event);
    else if (m_dragHandle == RightHandle)
        dragRight(distance);
    else
        dragLeft(distance);
    // Also after a refused move, so that a pointer outside the limits builds up no lag.
    m_lastGlobal = global;
}

void InterceptSlider::dragRight(int distance)
{
    const QRect rail = groove();
    const int x = m_rightHandle->x() + distance;
    const int least = std::max(rail.left(), m_leftHandle->x() + m_leftHandle->width());
    if (x < least || x > rail.left() + rail.width())
        return;
    m_rightHandle->move(x, m_rightHandle->y());
    m_rightValue = valueAt(x - rail.left());
    update();
    emit rightValueChanged(m_rightValue);
}

void InterceptSlider::dragLeft(int distance)
{
    const QRect rail = groove();
    const int x = m_leftHandle->x() + distance;
    const int rightEdge = x + m_leftHandle->width();
    if (x < 0 || rightEdge > m_rightHandle->x() || x > rail.right() + 1)
        return;
    m_leftHandle->move(x, m_leftHandle->y());
    m_leftValue = valueAt(rightEdge - rail.left());
    update();
    emit leftValueChanged(m_leftValue);
}

void InterceptSlider::mouseReleaseEvent(QMouseEvent *event)
{
    m_dragHandle = NoHandle;
    QSlider::mouseReleaseEvent(event);
}
