// SPDX-License-Identifier: MIT
#include "controls/repolish.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

void repolish(QWidget *widget)
{
    const auto polishAgain = [](QWidget *each) {
        each->style()->unpolish(each);
        each->style()->polish(each);
    };
    polishAgain(widget);
    const QList<QWidget *> children = widget->findChildren<QWidget *>();
    for (QWidget *child : children)
        polishAgain(child);
    widget->setStyle(QApplication::style());
}
