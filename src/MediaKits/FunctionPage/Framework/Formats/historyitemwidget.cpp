// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/historyitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Formats/formatitemroles.h"
#include "MediaKits/FunctionPage/Framework/Formats/presetlook.h"
#include "ui_historyitemwidget.h"

#include <QListWidgetItem>

HistoryItemWidget::HistoryItemWidget(const QListWidgetItem &item, QWidget *parent) : QWidget(parent)
{
    Ui::HistoryItemWidget form;
    form.setupUi(this);
    const auto category = item.data(FormatRecordRole).value<QSharedPointer<VADisplayCategory>>();
    const auto preset = item.data(RecentPresetRole).value<QSharedPointer<EncParam>>();
    // GIF and device presets stand in categories that the catalogue doesn't list.
    if (category) {
        form.lblCategoryIcon->setPixmap(categoryPixmap(*category));
        form.lblCategory->setText(category->title);
    }
    form.lblIcon->setPixmap(presetPixmap());
    form.lblTitle->setText(preset->name);
    form.lblSub->setText(presetDetailText(*preset, true));
}

void HistoryItemWidget::on_btnDel_clicked()
{
    emit operationActivate(DeleteOperation);
}
