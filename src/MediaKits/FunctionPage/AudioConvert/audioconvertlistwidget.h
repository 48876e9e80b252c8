// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class AudioConvertListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    using TaskListWidget::TaskListWidget;

protected:
    MediaFunction function() const override { return MediaFunction::AudioConvert; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};
