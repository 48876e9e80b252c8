// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/categoryitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Formats/formatitemroles.h"
#include "MediaKits/FunctionPage/Framework/Formats/presetlook.h"
#include "ui_categoryitemwidget.h"

#include <QListWidgetItem>

CategoryItemWidget::CategoryItemWidget(const QListWidgetItem &item, QWidget *parent)
    : QWidget(parent)
{
    Ui::CategoryItemWidget form;
    form.setupUi(this);
    // The list's viewport handles hover and clicks.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    const auto category = item.data(FormatRecordRole).value<QSharedPointer<VADisplayCategory>>();
    form.lblIcon->setPixmap(categoryPixmap(*category));
    form.lblTitle->setText(category->title);
}
