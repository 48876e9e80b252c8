// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/tasktreewidget.h"

class MediaCutTreeWidget : public TaskTreeWidget
{
    Q_OBJECT

public:
    /// Number of the page in usage tracking.
    static constexpr int page = 3;

    explicit MediaCutTreeWidget(QWidget *parent = nullptr);

protected:
    int trackingPage() const override { return page; }
    SourceRowWidget *createSourceRow(QTreeWidgetItem *item) override;
    TaskRowWidget *createFragmentRow(QTreeWidgetItem *item) override;
    void markFragments(SourceRowWidget *source) override;
};
