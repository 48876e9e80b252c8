// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistwidget.h"

#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistitemwidget.h"

MediaDubbingListWidget::MediaDubbingListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaDubbingListWidget::TaskGrpState");
}

QSharedPointer<MediaTask> MediaDubbingListWidget::createTask(const QString &path)
{
    return createConversion(path);
}

TaskRowWidget *MediaDubbingListWidget::createRow(QListWidgetItem *item)
{
    return new MediaDubbingListItemWidget(item, this);
}
