// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistitemwidget.h"

#include "MediaKits/FunctionPage/VideoDubbing/videodubbingdialog.h"

namespace {

// What opens the dialog again as it was left.
constexpr int settingsRole = Qt::UserRole + 10;

TaskRowWidget::Kind dubbingRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Dubbing;
    kind.reportsFailures = true;
    kind.needsPicture = true;
    kind.openEditor =
        static_cast<TaskRowWidget::Slot>(&MediaDubbingListItemWidget::on_btnDubbingSet_clicked);
    kind.form.editorButton = QLatin1String("btnDubbingSet");
    kind.form.editorText = MediaDubbingListItemWidget::tr("配乐设置");
    kind.form.editorIcon = QStringLiteral(":/drawable/row_dubbing.png");
    kind.form.startText = MediaDubbingListItemWidget::tr("开始配音");
    return kind;
}

} // namespace

MediaDubbingListItemWidget::MediaDubbingListItemWidget(QListWidgetItem *item, QWidget *parent)
    : VideoRowWidget(RowItem(item), dubbingRows(), parent)
{
    probeSource();
}

void MediaDubbingListItemWidget::on_btnDubbingSet_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new VideoDubbingDialog(this);
    dialog->showMedium(sourcePath(), *info);
    dialog->setConversion(param());
    const QVariant earlier = item().data(settingsRole);
    if (earlier.isValid())
        dialog->setSettings(earlier.toMap());
    edit(
        dialog,
        [](const VideoDubbingDialog &edited) {
            return std::make_pair(edited.settings(), edited.optionMap());
        },
        [this](const std::pair<QVariantMap, QVariantMap> &saved) {
            setDubbing(saved.first, {saved.second});
        });
}

void MediaDubbingListItemWidget::adoptEdited(const TaskRowWidget &edited)
{
    const auto &row = static_cast<const MediaDubbingListItemWidget &>(edited);
    setDubbing(row.item().data(settingsRole).toMap(), row.param().audioFilters);
}

void MediaDubbingListItemWidget::setDubbing(const QVariantMap &settings,
                                            const QVariantList &audioFilters)
{
    RowItem own = item();
    own.setData(settingsRole, settings);
    param().audioFilters = audioFilters;
}
