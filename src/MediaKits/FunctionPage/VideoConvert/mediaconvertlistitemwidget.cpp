// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistitemwidget.h"

#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistwidget.h"

MediaConvertListItemWidget::MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent)
    : VideoRowWidget(RowItem(item), {MediaConvertListWidget::page, true, {}}, parent)
{
    probeSource();
}
