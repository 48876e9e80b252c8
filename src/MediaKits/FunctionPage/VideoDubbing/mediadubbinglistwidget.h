// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class MediaDubbingListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    explicit MediaDubbingListWidget(QWidget *parent = nullptr);

protected:
    MediaFunction function() const override { return MediaFunction::Dubbing; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};

Q_DECLARE_METATYPE(MediaDubbingListWidget::TaskGrpState)
