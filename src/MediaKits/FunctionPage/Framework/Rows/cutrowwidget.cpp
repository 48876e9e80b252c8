// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/cutrowwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"

namespace {

TaskRowWidget::Kind withEditor(TaskRowWidget::Kind kind)
{
    kind.openEditor = static_cast<TaskRowWidget::Slot>(&CutRowWidget::on_btnCut_clicked);
    kind.form.editorButton = QLatin1String("btnCut");
    kind.form.editorToolTip = CutRowWidget::tr("剪裁");
    return kind;
}

} // namespace

CutRowWidget::CutRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : VideoRowWidget(item, withEditor(kind), parent)
{
}

void CutRowWidget::on_btnCut_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    const auto saved =
        VideoCutDialog::edit(sourcePath(), *info, {param().timeRange, param().cropRect}, this);
    if (!saved || !task())
        return;
    applyEdited([this, &saved] {
        param().timeRange = saved->timeRange;
        param().cropRect = saved->cropRect;
        showSize();
        showLength();
        onCut();
    });
}
