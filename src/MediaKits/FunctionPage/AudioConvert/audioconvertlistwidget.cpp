// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistwidget.h"

#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistitemwidget.h"

TaskRowWidget *AudioConvertListWidget::createRow(QListWidgetItem *item)
{
    return new AudioConvertListItemWidget(item, this);
}
