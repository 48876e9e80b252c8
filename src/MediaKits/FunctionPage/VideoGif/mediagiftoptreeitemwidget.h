// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/sourcerowwidget.h"

/// One video to make GIFs of.
class MediaGifTopTreeItemWidget : public SourceRowWidget
{
    Q_OBJECT

public:
    MediaGifTopTreeItemWidget(QTreeWidgetItem *item, QWidget *parent);

protected:
    void onSourceProbed(const MediaInfoData &info) override;
};
