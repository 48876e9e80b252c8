// SPDX-License-Identifier: MIT
#include "controls/imagectrl.h"

#include <QPainter>

ImageCtrl::ImageCtrl(QWidget *parent) : QWidget(parent) {}

void ImageCtrl::setPixmap(const QPixmap &pixmap)
{
    m_pixmap = pixmap;
    update();
}

void ImageCtrl::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void ImageCtrl::paintEvent(QPaintEvent * /*event*/)
{
    if (m_pixmap.isNull())
        return;
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), m_pixmap);
}
