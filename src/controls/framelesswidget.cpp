// SPDX-License-Identifier: MIT
#include "controls/framelesswidget.h"

#include "controls/edgeresizer.h"

#include <QMouseEvent>

namespace {
constexpr int border = 4;
constexpr int leastSide = 45;
} // namespace

FramelessWidget::FramelessWidget(QWidget *parent) : QWidget(parent)
{
    setWindowFlag(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setMinimumSize(leastSide, leastSide);
    setStyleSheet(QStringLiteral("background:#D1EEEE"));
    new EdgeResizer(this, border);
}

void FramelessWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragStart = event->pos();
}

void FramelessWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        move(pos() + mapFromGlobal(event->globalPos()) - m_dragStart);
}
