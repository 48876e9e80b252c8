// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

class MediaShotListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    using TaskListWidget::TaskListWidget;

    QString startHindrance() const override;

protected:
    MediaFunction function() const override { return MediaFunction::Shot; }
    bool needsPreset() const override { return false; }
    QSharedPointer<MediaTask> createTask(const QString &path) override;
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};
