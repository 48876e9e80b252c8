// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class MediaBeautifyListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    explicit MediaBeautifyListWidget(QWidget *parent = nullptr);

protected:
    MediaFunction function() const override { return MediaFunction::Beautify; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};

Q_DECLARE_METATYPE(MediaBeautifyListWidget::TaskGrpState)
