// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/fragmentrowwidget.h"

/// One fragment of a file.
class MediaCutChildTreeItemWidget : public FragmentRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the facts of the source and the task already
    MediaCutChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent);

protected:
    QString fixedSize() const override;
};
