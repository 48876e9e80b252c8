// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/fragmentrowwidget.h"

namespace {

TaskRowWidget::Kind withFragmentButtons(TaskRowWidget::Kind kind)
{
    kind.reportsFailures = false;
    kind.form.speedButton = QLatin1String("btnSwitchRapid");
    return kind;
}

} // namespace

FragmentRowWidget::FragmentRowWidget(QTreeWidgetItem *item, const Kind &kind, QWidget *parent)
    : CutRowWidget(RowItem(item), withFragmentButtons(kind), parent)
{
    adoptKnown();
    if (startMs() > 0)
        requestPicture(startMs());
}

int FragmentRowWidget::startMs() const
{
    const auto range = param().timeRange;
    return range ? range->start : 0;
}

void FragmentRowWidget::adoptPicture(const QPixmap &picture)
{
    if (startMs() == 0)
        CutRowWidget::adoptPicture(picture);
}

void FragmentRowWidget::onCut()
{
    requestPicture(startMs());
}
