// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistitemwidget.h"

#include "MediaKits/FunctionPage/VideoBeautify/videobeautydialog.h"

#include <QListWidgetItem>

namespace {

TaskRowWidget::Kind beautyRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Beautify;
    kind.reportsFailures = true;
    kind.needsPicture = true;
    kind.form.ownPreset = false;
    kind.openEditor =
        static_cast<TaskRowWidget::Slot>(&MediaBeautifyListItemWidget::on_btnBeautySet_clicked);
    kind.form.editorButton = QLatin1String("btnBeautySet");
    kind.form.editorText = MediaBeautifyListItemWidget::tr("美化设置");
    kind.form.editorIcon = QStringLiteral(":/drawable/row_beauty.png");
    kind.form.speedButton = QLatin1String("btnSwitchRapid");
    return kind;
}

} // namespace

MediaBeautifyListItemWidget::MediaBeautifyListItemWidget(QListWidgetItem *item, QWidget *parent)
    : VideoRowWidget(RowItem(item), beautyRows(), parent)
{
    probeSource();
}

void MediaBeautifyListItemWidget::on_btnBeautySet_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new VideoBeautyDialog(this);
    dialog->showMedium(sourcePath(), *info);
    dialog->setHasSound(!info->audios.isEmpty());
    dialog->setParam(param().beauty);
    edit(
        dialog, [](const VideoBeautyDialog &edited) { return edited.param(); },
        [this](const QSharedPointer<VideoBeautyParam> &look) { setBeauty(look); });
}

void MediaBeautifyListItemWidget::adoptEdited(const TaskRowWidget &edited)
{
    setBeauty(static_cast<const MediaBeautifyListItemWidget &>(edited).param().beauty);
}

void MediaBeautifyListItemWidget::setBeauty(const QSharedPointer<VideoBeautyParam> &beauty)
{
    param().beauty = beauty;
    showLength();
    showSize();
}
