// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

/// One video to lay music over.
class MediaDubbingListItemWidget : public VideoRowWidget
{
    Q_OBJECT

public:
    MediaDubbingListItemWidget(QListWidgetItem *item, QWidget *parent);

    void adoptEdited(const TaskRowWidget &edited) override;

public slots:
    void on_btnDubbingSet_clicked();

private:
    void setDubbing(const QVariantMap &settings, const QVariantList &audioFilters);
};
