// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistwidget.h"

#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistitemwidget.h"

MediaConvertListWidget::MediaConvertListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaConvertListWidget::TaskGrpState");
}

TaskRowWidget *MediaConvertListWidget::createRow(QListWidgetItem *item)
{
    return new MediaConvertListItemWidget(item, this);
}
