// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/encparaminfoitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Formats/formatitemroles.h"
#include "MediaKits/FunctionPage/Framework/Formats/presetlook.h"
#include "ui_encparaminfoitemwidget.h"

#include <QListWidgetItem>

EncParamInfoItemWidget::EncParamInfoItemWidget(const QListWidgetItem &item, QWidget *parent)
    : QWidget(parent)
{
    Ui::EncParamInfoItemWidget form;
    form.setupUi(this);
    // The list's viewport handles hover and clicks.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    const auto preset = item.data(FormatRecordRole).value<QSharedPointer<EncParam>>();
    form.lblIcon->setPixmap(presetPixmap());
    form.lblTitle->setText(preset->name);
    form.lblSub->setText(presetDetailText(*preset, false, item.data(OpenSizeRole).toSize()));
}
