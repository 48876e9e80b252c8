// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/cutrowwidget.h"

/// One file to convert.
class MediaConvertListItemWidget : public CutRowWidget
{
    Q_OBJECT

public:
    MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent);
};
