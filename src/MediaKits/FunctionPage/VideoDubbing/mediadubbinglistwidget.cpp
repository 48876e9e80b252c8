// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistwidget.h"

#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistitemwidget.h"

MediaDubbingListWidget::MediaDubbingListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaDubbingListWidget::TaskGrpState");
}

TaskRowWidget *MediaDubbingListWidget::createRow(QListWidgetItem *item)
{
    return new MediaDubbingListItemWidget(item, this);
}
