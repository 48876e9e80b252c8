// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Tree/tasktreewidget.h"

class MediaGifTreeWidget : public TaskTreeWidget
{
    Q_OBJECT

public:
    explicit MediaGifTreeWidget(QWidget *parent = nullptr);

    /// Whether new GIFs, and those that have not begun, have colours chosen for each of them.
    void setHighQuality(bool on);

protected:
    MediaFunction function() const override { return MediaFunction::Gif; }
    bool needsPreset() const override { return false; }
    SourceRowWidget *createSourceRow(QTreeWidgetItem *item) override;
    TaskRowWidget *createFragmentRow(QTreeWidgetItem *item) override;
    void markFragments(SourceRowWidget *source) override;

private:
    GifPalette m_palette = GifPalette::Fixed;
};
