// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

/// One video and the marks that it gets.
class MediaWatermarkListItemWidget : public VideoRowWidget
{
    Q_OBJECT

public:
    MediaWatermarkListItemWidget(QListWidgetItem *item, QWidget *parent);

    void adoptEdited(const TaskRowWidget &edited) override;

public slots:
    void on_btnWatermarkSet_clicked();

protected:
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;

private:
    /// @param marks shared maps, as the editor gives them
    void setMarks(const QVariantList &marks);
    /// Marks of another row that came before this one's source was known.
    void placeWaiting(const MediaInfoData &info);
};
