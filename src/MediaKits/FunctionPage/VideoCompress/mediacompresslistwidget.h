// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"
#include "MediaKits/FunctionPage/VideoCompress/leastratetrials.h"

class MediaCompressListWidget : public TaskListWidget
{
    Q_OBJECT

public:
    explicit MediaCompressListWidget(QWidget *parent = nullptr);

    /// The rate of new rows and of those that have not begun, which lose other settings.
    void setCompressRate(double rate);

protected:
    MediaFunction function() const override { return MediaFunction::Compress; }
    bool needsPreset() const override { return false; }
    TaskRowWidget *createRow(QListWidgetItem *item) override;

private:
    double m_rate = 1.0;
    LeastRateTrials *const m_trials;
};
