// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCut/mediacutchildtreeitemwidget.h"

namespace {

TaskRowWidget::Kind cutRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Cut;
    return kind;
}

} // namespace

MediaCutChildTreeItemWidget::MediaCutChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent)
    : FragmentRowWidget(item, cutRows(), parent)
{
}

QString MediaCutChildTreeItemWidget::fixedSize() const
{
    const auto crop = param().cropRect;
    return crop ? MediaFacts::sizeInPixels(crop->width, crop->height) : QString();
}
