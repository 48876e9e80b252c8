// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistwidget.h"

#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistitemwidget.h"

MediaBeautifyListWidget::MediaBeautifyListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaBeautifyListWidget::TaskGrpState");
}

QSharedPointer<MediaTask> MediaBeautifyListWidget::createTask(const QString &path)
{
    return createConversion(path);
}

TaskRowWidget *MediaBeautifyListWidget::createRow(QListWidgetItem *item)
{
    return new MediaBeautifyListItemWidget(item, this);
}
