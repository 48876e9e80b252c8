// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/dubbingfragmentitemwidget.h"

#include "controls/plaintooltip.h"
#include "controls/repolish.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "ui_dubbingfragmentitemwidget.h"

#include <QDir>
#include <QFileInfo>
#include <QListWidgetItem>

DubbingFragmentItemWidget::DubbingFragmentItemWidget(QListWidgetItem *item, QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::DubbingFragmentItemWidget>()), m_item(item)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    m_ui->lblFileName->setAutoToolTips(false);
    refresh();
}

DubbingFragmentItemWidget::~DubbingFragmentItemWidget() = default;

void DubbingFragmentItemWidget::refresh()
{
    const auto entry = m_item->data(entryRole).value<MusicEntry>();
    const QString path = entry->value(MusicKey::filePath).toString();
    const QString name = QFileInfo(path).fileName();
    m_ui->lblFileName->setFullText(name);
    setPlainToolTip(m_ui->lblFileName, QDir::toNativeSeparators(path));
    m_ui->lblDuration->setText(timeText(entry->value(MusicKey::duration).toInt()));
    m_ui->lblStart->setText(timeText(entry->value(MusicKey::startTime).toInt()));
    m_ui->lblVolume->setText(
        tr("%1%").arg(qRound(entry->value(MusicKey::volume).toFloat() * 100.0F)));
    m_item->setData(Qt::AccessibleTextRole, name);
}

void DubbingFragmentItemWidget::setChecked(bool checked)
{
    setProperty("checked", checked);
    repolish(this);
}

void DubbingFragmentItemWidget::on_btnDel_clicked()
{
    delete m_item;
}
