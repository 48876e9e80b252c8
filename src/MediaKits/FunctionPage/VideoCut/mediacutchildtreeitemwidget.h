// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/cutrowwidget.h"

/// One fragment of a file.
class MediaCutChildTreeItemWidget : public CutRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the facts of the source and the task already
    MediaCutChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent);

    /// Only a fragment from the beginning looks like its source.
    void adoptPicture(const QPixmap &picture) override;

protected:
    QString fixedSize() const override;
    void onCut() override;

private:
    int startMs() const;
};
