// SPDX-License-Identifier: MIT
#include "controls/stylebackground.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

void drawStyleBackground(QPainter *painter, const QWidget *widget)
{
    QStyleOption option;
    option.initFrom(widget);
    widget->style()->drawPrimitive(QStyle::PE_Widget, &option, painter, widget);
}
