// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/cutrowwidget.h"

/// Base of the rows of a source's fragments, below its own. Each shows its own first frame.
class FragmentRowWidget : public CutRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the facts of the source and the task already
    /// @param kind without what all such rows have in common
    FragmentRowWidget(QTreeWidgetItem *item, const Kind &kind, QWidget *parent);

    /// Only a fragment from the beginning looks like its source.
    void adoptPicture(const QPixmap &picture) override;

protected:
    void onCut() override;

private:
    int startMs() const;
};
