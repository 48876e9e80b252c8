// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/cutfragment.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "ui_fragmentitemwidget.h"

#include <QListWidgetItem>

FragmentItemWidget::FragmentItemWidget(QListWidgetItem *item,
                                       const QSharedPointer<CutFragment> &fragment,
                                       const QString &size, QWidget *parent)
    : QWidget(parent),
      m_ui(std::make_unique<Ui::FragmentItemWidget>()),
      m_item(item),
      m_fragment(fragment)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    if (m_fragment->timeRange)
        showSpan();
    m_ui->wdtSpan->setVisible(!m_fragment->timeRange.isNull());
    m_ui->lblCrop->setText(size);
    m_ui->wdtSize->setHidden(size.isEmpty());
    endNaming();
    // While it is typed: the dialog may be confirmed before the edit is closed.
    connect(m_ui->ceFileName, &ComplexEdit::editTextChanged, this, &FragmentItemWidget::rename);
    connect(m_ui->ceFileName, &ComplexEdit::editingFinished, this, &FragmentItemWidget::endNaming);
}

FragmentItemWidget::~FragmentItemWidget() = default;

void FragmentItemWidget::showSpan()
{
    const QString start = timeText(m_fragment->timeRange->start);
    const QString end = timeText(m_fragment->timeRange->end);
    const QString fromTo = start + QLatin1Char('-') + end;
    m_ui->lblFromTo->setText(fromTo);
    m_fragment->name += QStringLiteral("(%1)").arg(QString(fromTo).remove(QLatin1Char(':')));
}

void FragmentItemWidget::rename(const QString &typed)
{
    m_fragment->name = outputNameFrom(typed, m_name);
}

void FragmentItemWidget::endNaming()
{
    m_name = m_fragment->name;
    m_ui->ceFileName->setText(m_name);
}

void FragmentItemWidget::on_btnDel_clicked()
{
    delete m_item;
}

void FragmentItemWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QPoint fromCorner = m_ui->btnDel->property("topRight").toPoint();
    m_ui->btnDel->move(width() - m_ui->btnDel->width() - fromCorner.x(), fromCorner.y());
}
