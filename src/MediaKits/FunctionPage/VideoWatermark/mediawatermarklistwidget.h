// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class MediaWatermarkListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    explicit MediaWatermarkListWidget(QWidget *parent = nullptr);

protected:
    MediaFunction function() const override { return MediaFunction::Watermark; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};

Q_DECLARE_METATYPE(MediaWatermarkListWidget::TaskGrpState)
