// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/mediacompresslistwidget.h"

#include "MediaKits/FunctionPage/VideoCompress/mediacompresslistitemwidget.h"

MediaCompressListWidget::MediaCompressListWidget(QWidget *parent)
    : TaskListWidget(parent), m_trials(new LeastRateTrials(this))
{
}

TaskRowWidget *MediaCompressListWidget::createRow(QListWidgetItem *item)
{
    auto settings = QSharedPointer<CompressSettingsParam>::create();
    settings->rate = m_rate;
    item->setData(CompressSettingsRole, QVariant::fromValue(settings));
    return new MediaCompressListItemWidget(item, m_trials, this);
}

void MediaCompressListWidget::setCompressRate(double rate)
{
    m_rate = rate;
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            static_cast<MediaCompressListItemWidget *>(row)->applyRate(rate);
    }
}
