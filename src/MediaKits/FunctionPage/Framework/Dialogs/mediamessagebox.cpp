// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "ui_mediamessagebox.h"

MediaMessageBox::MediaMessageBox(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::MediaMessageBox>())
{
    setUpForm(*m_ui);
    setTitle(tr("提示"));
    m_ui->btnCancel->hide();
    m_ui->btnDetails->hide();
}

MediaMessageBox::~MediaMessageBox() = default;

void MediaMessageBox::setText(const QString &text)
{
    m_ui->lblText->setText(text);
}

QString MediaMessageBox::text() const
{
    return m_ui->lblText->text();
}

void MediaMessageBox::showMessage(const QString &title, const QString &text, QWidget *parent)
{
    auto *box = new MediaMessageBox(parent);
    box->setTitle(title);
    box->setText(text);
    runModal(box);
}

bool MediaMessageBox::ask(const QString &title, const QString &text, QWidget *parent)
{
    auto *box = new MediaMessageBox(parent);
    box->setTitle(title);
    box->setText(text);
    box->m_ui->btnCancel->show();
    return runModal(box);
}

void MediaMessageBox::showFailure(const QString &text, const TaskFailure &failure, QWidget *parent)
{
    auto *box = new MediaMessageBox(parent);
    box->m_failure = failure;
    box->setText(text + QLatin1Char('\n') + failure.cause);
    box->m_ui->btnDetails->setVisible(!failure.report.isEmpty());
    runModal(box);
}

void MediaMessageBox::on_btnDetails_clicked()
{
    runModal(new FailureDetailsDialog(m_failure, this));
}

void MediaMessageBox::on_btnOK_clicked()
{
    accept();
}

void MediaMessageBox::on_btnCancel_clicked()
{
    reject();
}
