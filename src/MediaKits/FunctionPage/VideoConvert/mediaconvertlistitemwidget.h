// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

/// One file to convert.
class MediaConvertListItemWidget : public VideoRowWidget
{
    Q_OBJECT

public:
    MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent);
};
