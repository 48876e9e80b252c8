// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCut/mediacuttoptreeitemwidget.h"

MediaCutTopTreeItemWidget::MediaCutTopTreeItemWidget(QTreeWidgetItem *item, QWidget *parent)
    : SourceRowWidget(item, QLatin1String("lstItemwdtMediaCut"), parent)
{
    probeSource();
}
