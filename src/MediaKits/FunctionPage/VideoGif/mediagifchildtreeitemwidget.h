// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/fragmentrowwidget.h"

/// One GIF. Its size and frame rate are those of its own preset, which nothing replaces.
class MediaGifChildTreeItemWidget : public FragmentRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the facts of the source and the task already
    MediaGifChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent);

    void setEncParamInfoID(quint32) override {}

protected:
    QString fixedSize() const override;
};
