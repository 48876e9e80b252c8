// SPDX-License-Identifier: MIT
#include "controls/fancyslider.h"

#include <QPainter>
#include <QStyleOptionSlider>
#include <QVariant>

FancySlider::FancySlider(QWidget *parent) : QSlider(parent) {}

FancySlider::FancySlider(Qt::Orientation orientation, QWidget *parent)
    : QSlider(orientation, parent)
{
}

void FancySlider::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    QPainter painter(this);
    painter.setFont(font());
    painter.drawText(handle.translated(property("textoffset").toPoint()),
                     Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextDontClip,
                     QString::number(value()) + property("suffix").toString());
}
