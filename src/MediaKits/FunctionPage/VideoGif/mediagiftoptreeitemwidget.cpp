// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/mediagiftoptreeitemwidget.h"

MediaGifTopTreeItemWidget::MediaGifTopTreeItemWidget(QTreeWidgetItem *item, QWidget *parent)
    : SourceRowWidget(item, QLatin1String("lstItemwdtMediaGif"), parent)
{
    probeSource();
}

void MediaGifTopTreeItemWidget::onSourceProbed(const MediaInfoData &info)
{
    SourceRowWidget::onSourceProbed(info);
    if (info.video)
        return;
    change([](RowContent &content) {
        content.hindrance = tr("文件中没有画面");
        content.editorEnabled = false;
    });
}
