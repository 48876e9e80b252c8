// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/tasktreewidget.h"

class MediaCutTreeWidget : public TaskTreeWidget
{
    Q_OBJECT

public:
    using TaskTreeWidget::TaskTreeWidget;

protected:
    MediaFunction function() const override { return MediaFunction::Cut; }
    SourceRowWidget *createSourceRow(QTreeWidgetItem *item) override;
    TaskRowWidget *createFragmentRow(QTreeWidgetItem *item) override;
    void markFragments(SourceRowWidget *source) override;
};
