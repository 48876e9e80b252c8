// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCut/mediacutchildtreeitemwidget.h"

#include "MediaKits/FunctionPage/VideoCut/mediacuttreewidget.h"

namespace {

TaskRowWidget::Kind cutRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Cut;
    kind.reportsFailures = false;
    kind.form.speedButton = QLatin1String("btnSwitchRapid");
    return kind;
}

} // namespace

MediaCutChildTreeItemWidget::MediaCutChildTreeItemWidget(QTreeWidgetItem *item, QWidget *parent)
    : CutRowWidget(RowItem(item), cutRows(), parent)
{
    adoptKnown();
    if (startMs() > 0)
        requestPicture(startMs());
}

int MediaCutChildTreeItemWidget::startMs() const
{
    const auto range = param().timeRange;
    return range ? range->start : 0;
}

void MediaCutChildTreeItemWidget::adoptPicture(const QPixmap &picture)
{
    if (startMs() == 0)
        CutRowWidget::adoptPicture(picture);
}

void MediaCutChildTreeItemWidget::onCut()
{
    requestPicture(startMs());
}

QString MediaCutChildTreeItemWidget::fixedSize() const
{
    const auto crop = param().cropRect;
    return crop ? MediaFacts::sizeInPixels(crop->width, crop->height) : QString();
}
