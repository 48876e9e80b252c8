// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"

#include "ui_failuredetailsdialog.h"

#include <QClipboard>
#include <QGuiApplication>

FailureDetailsDialog::FailureDetailsDialog(const TaskFailure &failure, QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::FailureDetailsDialog>())
{
    setTitle(tr("转换失败"));
    setUpForm(*m_ui);
    m_ui->lblCause->setText(failure.cause);
    m_ui->pteReport->setPlainText(failure.report.join(QLatin1Char('\n')));
    m_ui->pteReport->setVisible(!failure.report.isEmpty());
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
