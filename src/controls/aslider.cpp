// SPDX-License-Identifier: MIT
#include "controls/aslider.h"

#include <QMouseEvent>
#include <QStyleOptionSlider>

ASlider::ASlider(QWidget *parent) : QSlider(parent) {}

ASlider::ASlider(Qt::Orientation orientation, QWidget *parent) : QSlider(orientation, parent) {}

void ASlider::mousePressEvent(QMouseEvent *event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto rectOf = [this, &option](QStyle::SubControl part) {
        return style()->subControlRect(QStyle::CC_Slider, &option, part, this);
    };
    if (!rectOf(QStyle::SC_SliderHandle).contains(event->pos())) {
        const QRect groove = rectOf(QStyle::SC_SliderGroove);
        const bool isHorizontal = orientation() == Qt::Horizontal;
        const int length = isHorizontal ? groove.width() : groove.height();
        const int position = isHorizontal ? event->pos().x() : length - event->pos().y();
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), position, length, false));
    }
    QSlider::mousePressEvent(event);
}
