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
    QSharedPointer<MediaTask> createTask(const QString &path) override;
    TaskRowWidget *createRow(QListWidgetItem *item) override;
};

Q_DECLARE_METATYPE(MediaWatermarkListWidget::TaskGrpState)
