// SPDX-License-Identifier: MIT
#include "controls/titlebar.h"

#include "controls/stylebackground.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

TitleBar::TitleBar(QWidget *parent) : QWidget(parent)
{
    window()->setWindowFlag(Qt::FramelessWindowHint);
}

void TitleBar::windowMaximized()
{
    window()->showMaximized();
}

void TitleBar::windowMinimized()
{
    window()->showMinimized();
}

void TitleBar::windowClose()
{
    window()->close();
}

void TitleBar::windowNormal()
{
    if (window()->isMaximized())
        window()->showNormal();
}

void TitleBar::windowToggleMaximized()
{
    if (window()->isMaximized())
        windowNormal();
    else
        windowMaximized();
}

void TitleBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_pressed = true;
    m_firstMove = true;
    m_stayedPut = true;
    m_pressPos = event->pos();
}

void TitleBar::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed)
        return;
    if (m_firstMove) {
        beginMove();
        return;
    }
    const QPoint cursor = event->globalPos();
    window()->move(window()->pos() + cursor - mapToGlobal(m_pressPos));
    m_pressPos = mapFromGlobal(cursor);
}

void TitleBar::beginMove()
{
    m_firstMove = false;
    m_stayedPut = false;
    if (!window()->isMaximized())
        return;
    // The window shrinks under the cursor: the cursor keeps its place in proportion.
    const double ratio = double(m_pressPos.x()) / std::max(1, width());
    m_pressPos.setX(int(window()->normalGeometry().width() * ratio));
    windowNormal();
}

void TitleBar::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_pressed)
        return;
    if (window()->y() < 0) {
        if (m_stayedPut || !m_dblClkEnable)
            window()->move(window()->x(), 0);
        else
            windowMaximized();
    }
    m_pressed = false;
    m_firstMove = false;
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_dblClkEnable)
        windowToggleMaximized();
}

void TitleBar::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawStyleBackground(&painter, this);
}
