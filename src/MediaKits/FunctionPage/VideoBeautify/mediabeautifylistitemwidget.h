// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

/// One video to beautify.
class MediaBeautifyListItemWidget : public VideoRowWidget
{
    Q_OBJECT

public:
    MediaBeautifyListItemWidget(QListWidgetItem *item, QWidget *parent);

    void adoptEdited(const TaskRowWidget &edited) override;

public slots:
    void on_btnBeautySet_clicked();

private:
    void setBeauty(const QSharedPointer<VideoBeautyParam> &beauty);
};
