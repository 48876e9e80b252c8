// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistwidget.h"

#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistitemwidget.h"

MediaBeautifyListWidget::MediaBeautifyListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaBeautifyListWidget::TaskGrpState");
}

TaskRowWidget *MediaBeautifyListWidget::createRow(QListWidgetItem *item)
{
    return new MediaBeautifyListItemWidget(item, this);
}
