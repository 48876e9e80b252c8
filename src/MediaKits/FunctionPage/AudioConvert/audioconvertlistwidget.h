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
    QSharedPointer<MediaTask> createTask(const QString &path) override;
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};
