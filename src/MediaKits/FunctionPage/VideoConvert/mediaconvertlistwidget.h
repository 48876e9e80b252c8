// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class MediaConvertListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    explicit MediaConvertListWidget(QWidget *parent = nullptr);

protected:
    MediaFunction function() const override { return MediaFunction::Convert; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};

Q_DECLARE_METATYPE(MediaConvertListWidget::TaskGrpState)
