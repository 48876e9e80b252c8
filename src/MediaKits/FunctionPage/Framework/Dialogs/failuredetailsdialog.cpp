// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"

#include "ui_failuredetailsdialog.h"

#include <QClipboard>
#include <QGuiApplication>

FailureDetailsDialog::FailureDetailsDialog(const QString &title, const QString &text,
                                           const QStringList &report, QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::FailureDetailsDialog>())
{
    setTitle(title);
    setUpForm(*m_ui);
    m_ui->lblCause->setText(text);
    m_ui->pteReport->setPlainText(report.join(QLatin1Char('\n')));
    m_ui->pteReport->setVisible(!report.isEmpty());
}

FailureDetailsDialog::FailureDetailsDialog(const TaskFailure &failure, QWidget *parent)
    : FailureDetailsDialog(tr("转换失败"), failure.cause, failure.report, parent)
{
}

FailureDetailsDialog::FailureDetailsDialog(const TaskRemarks &remarks, QWidget *parent)
    : FailureDetailsDialog(tr("转换完成，请留意"), remarks.texts.join(QLatin1Char('\n')),
                           remarks.report, parent)
{
}

FailureDetailsDialog::~FailureDetailsDialog() = default;

void FailureDetailsDialog::on_btnCopy_clicked()
{
    QGuiApplication::clipboard()->setText(m_ui->lblCause->text() + QLatin1Char('\n') +
                                          m_ui->pteReport->toPlainText());
}

void FailureDetailsDialog::on_btnOK_clicked()
{
    accept();
}
