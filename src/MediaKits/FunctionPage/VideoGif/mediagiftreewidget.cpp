// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/mediagiftreewidget.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/FunctionPage/VideoGif/mediagifchildtreeitemwidget.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiftoptreeitemwidget.h"
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"

MediaGifTreeWidget::MediaGifTreeWidget(QWidget *parent) : TaskTreeWidget(parent)
{
    setEncParamInfoID(EncParamCatalog::defaultGifId);
}

void MediaGifTreeWidget::setHighQuality(bool on)
{
    m_palette = on ? GifPalette::Own : GifPalette::Fixed;
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            static_cast<ConvertTaskParam *>(row->task()->param())->palette = m_palette;
    }
}

SourceRowWidget *MediaGifTreeWidget::createSourceRow(QTreeWidgetItem *item)
{
    return new MediaGifTopTreeItemWidget(item, this);
}

TaskRowWidget *MediaGifTreeWidget::createFragmentRow(QTreeWidgetItem *item)
{
    return new MediaGifChildTreeItemWidget(item, this);
}

void MediaGifTreeWidget::markFragments(SourceRowWidget *source)
{
    const auto setUp = [this, source](MutiGifCutDialog &dialog) {
        dialog.setConversion(source->sourceInfo(), m_palette);
    };
    for (const auto &fragment : mark<MutiGifCutDialog>(source, setUp)) {
        addFragment(source, [&](ConvertTaskParam &param) {
            applyFragment(*fragment, param);
            param.palette = m_palette;
        });
    }
}
