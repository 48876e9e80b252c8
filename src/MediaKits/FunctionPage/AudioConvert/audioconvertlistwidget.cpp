// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistwidget.h"

#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistitemwidget.h"

QSharedPointer<MediaTask> AudioConvertListWidget::createTask(const QString &path)
{
    return createConversion(path);
}

TaskRowWidget *AudioConvertListWidget::createRow(QListWidgetItem *item)
{
    return new AudioConvertListItemWidget(item, this);
}
