// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistitemwidget.h"

#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistwidget.h"

MediaConvertListItemWidget::MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent)
    : CutRowWidget(RowItem(item), {MediaFunction::Convert, true, {}}, parent)
{
    probeSource();
}
