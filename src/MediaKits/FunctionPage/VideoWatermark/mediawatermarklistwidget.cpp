// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarklistwidget.h"

#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarklistitemwidget.h"

MediaWatermarkListWidget::MediaWatermarkListWidget(QWidget *parent) : TaskListWidget(parent)
{
    qRegisterMetaType<TaskGrpState>("MediaWatermarkListWidget::TaskGrpState");
}

TaskRowWidget *MediaWatermarkListWidget::createRow(QListWidgetItem *item)
{
    return new MediaWatermarkListItemWidget(item, this);
}
