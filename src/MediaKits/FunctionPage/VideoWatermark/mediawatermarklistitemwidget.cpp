// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarklistitemwidget.h"

#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"

#include <QListWidgetItem>

namespace {

struct OtherMarks
{
    QVariantList marks; // plain maps
    MarkedPicture picture;
};

} // namespace

Q_DECLARE_METATYPE(OtherMarks)

namespace {

// Data of the row's item: the marks as the editor takes them.
constexpr int marksRole = Qt::UserRole + 10;
// Marks of another row, as long as nobody knows what they are to be placed on.
constexpr int waitingRole = Qt::UserRole + 11;

TaskRowWidget::Kind watermarkRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Watermark;
    kind.reportsFailures = true;
    kind.needsPicture = true;
    kind.openEditor =
        static_cast<TaskRowWidget::Slot>(&MediaWatermarkListItemWidget::on_btnWatermarkSet_clicked);
    kind.form.editorButton = QLatin1String("btnWatermarkSet");
    kind.form.editorText = MediaWatermarkListItemWidget::tr("水印设置");
    kind.form.editorIcon = QStringLiteral(":/drawable/row_watermark.png");
    kind.form.startText = MediaWatermarkListItemWidget::tr("开始处理");
    return kind;
}

} // namespace

MediaWatermarkListItemWidget::MediaWatermarkListItemWidget(QListWidgetItem *item, QWidget *parent)
    : VideoRowWidget(RowItem(item), watermarkRows(), parent)
{
    probeSource();
}

void MediaWatermarkListItemWidget::on_btnWatermarkSet_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new VideoWatermarkDialog(this);
    dialog->showMedium(sourcePath(), *info);
    dialog->setMarks(item().data(marksRole).toList());
    edit(
        dialog, [](const VideoWatermarkDialog &edited) { return edited.marks(); },
        [this](const QVariantList &marks) { setMarks(marks); });
}

void MediaWatermarkListItemWidget::adoptEdited(const TaskRowWidget &edited)
{
    const auto &other = static_cast<const MediaWatermarkListItemWidget &>(edited);
    const auto from = other.sourceInfo();
    if (!from)
        return;
    const QVariantList marks = plainMarks(other.item().data(marksRole).toList());
    RowItem row = item();
    row.setData(waitingRole, QVariant::fromValue(OtherMarks{marks, markedPicture(*from)}));
    if (const auto to = sourceInfo())
        placeWaiting(*to);
    else
        // For a start that comes before the probe.
        param().videoFilters = marks;
}

void MediaWatermarkListItemWidget::keepSource(const QSharedPointer<MediaInfoData> &info)
{
    VideoRowWidget::keepSource(info);
    placeWaiting(*info);
}

void MediaWatermarkListItemWidget::placeWaiting(const MediaInfoData &info)
{
    RowItem row = item();
    const QVariant waiting = row.data(waitingRole);
    if (!waiting.isValid())
        return;
    const auto other = waiting.value<OtherMarks>();
    row.setData(waitingRole, {});
    setMarks(sharedMarks(marksFor(other.marks, other.picture, markedPicture(info))));
}

void MediaWatermarkListItemWidget::setMarks(const QVariantList &marks)
{
    RowItem row = item();
    row.setData(marksRole, marks);
    param().videoFilters = plainMarks(marks);
}
