// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/watermarkfragmentitemwidget.h"

#include "controls/plaintooltip.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "ui_watermarkfragmentitemwidget.h"

#include <QListWidgetItem>

WatermarkFragmentItemWidget::WatermarkFragmentItemWidget(QListWidgetItem *item, QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::WatermarkFragmentItemWidget>()), m_item(item)
{
    m_ui->setupUi(this);
    connect(m_ui->btnEdit, &QPushButton::clicked, this, &WatermarkFragmentItemWidget::editActive);
    refresh();
}

WatermarkFragmentItemWidget::~WatermarkFragmentItemWidget() = default;

void WatermarkFragmentItemWidget::refresh()
{
    const QVariantMap mark = *m_item->data(MarkRole).value<Mark>();
    const QString text = mark.value(MarkKey::text).toString();
    m_ui->lblText->setFullText(text.simplified());
    setPlainToolTip(m_ui->lblText, text);
    const int end = mark.value(MarkKey::endTime).toInt();
    // Without an end it lasts for the whole film, whose length isn't known.
    m_ui->lblTime->setText(end <= 0 ? tr("全程")
                                    : timeText(mark.value(MarkKey::startTime).toInt()) +
                                          QLatin1Char('-') + timeText(end));
    m_ui->btnEdit->setVisible(mark.value(MarkKey::filter) == QVariant(MarkFilter::text));
    m_item->setData(Qt::AccessibleTextRole, text);
}

void WatermarkFragmentItemWidget::on_btnDel_clicked()
{
    delete m_item;
}
