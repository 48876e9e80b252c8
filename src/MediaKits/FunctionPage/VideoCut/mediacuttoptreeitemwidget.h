// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/sourcerowwidget.h"

/// One file to cut.
class MediaCutTopTreeItemWidget : public SourceRowWidget
{
    Q_OBJECT

public:
    MediaCutTopTreeItemWidget(QTreeWidgetItem *item, QWidget *parent);
};
