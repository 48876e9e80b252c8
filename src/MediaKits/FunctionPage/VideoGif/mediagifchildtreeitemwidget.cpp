// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/mediagifchildtreeitemwidget.h"

namespace {

TaskRowWidget::Kind gifRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Gif;
    kind.form.ownPreset = false;
    return kind;
}

} // namespace

MediaGifChildTreeItemWidget::MediaGifChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent)
    : FragmentRowWidget(item, gifRows(), parent)
{
    change([this](RowContent &content) {
        content.out.format = param().format;
        content.outputSuffix = QLatin1Char('.') + param().format.toLower();
    });
    showSize();
}

QString MediaGifChildTreeItemWidget::fixedSize() const
{
    return MediaFacts::sizeInPixels(param().encParam->video);
}
