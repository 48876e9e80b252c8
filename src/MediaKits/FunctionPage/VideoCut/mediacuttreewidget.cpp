// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCut/mediacuttreewidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutchildtreeitemwidget.h"
#include "MediaKits/FunctionPage/VideoCut/mediacuttoptreeitemwidget.h"

SourceRowWidget *MediaCutTreeWidget::createSourceRow(QTreeWidgetItem *item)
{
    return new MediaCutTopTreeItemWidget(item, this);
}

TaskRowWidget *MediaCutTreeWidget::createFragmentRow(QTreeWidgetItem *item)
{
    return new MediaCutChildTreeItemWidget(item, this);
}

void MediaCutTreeWidget::markFragments(SourceRowWidget *source)
{
    for (const auto &fragment : mark<MutiVideoCutDialog>(source)) {
        addFragment(source, [&](ConvertTaskParam &param) {
            param.outputName = fragment->name;
            param.timeRange = fragment->timeRange;
            param.cropRect = fragment->cropRect;
        });
    }
}
