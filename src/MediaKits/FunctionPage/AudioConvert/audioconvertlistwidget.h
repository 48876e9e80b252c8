// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class AudioConvertListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    /// Number of the page in usage tracking.
    static constexpr int page = 10;

    using TaskListWidget::TaskListWidget;

protected:
    int trackingPage() const override { return page; }
    QSharedPointer<MediaTask> createTask(const QString &path) override;
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};
