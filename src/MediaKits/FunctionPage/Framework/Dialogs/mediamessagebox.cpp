// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"

#include "ui_mediamessagebox.h"

#include <QPointer>

MediaMessageBox::MediaMessageBox(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::MediaMessageBox>())
{
    setUpForm(*m_ui);
    setTitle(tr("提示"));
    m_ui->btnCancel->hide();
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

int MediaMessageBox::run(const QString &title, const QString &text, bool question, QWidget *parent)
{
    // The parent may go while the box runs.
    const QPointer<MediaMessageBox> box = new MediaMessageBox(parent);
    box->setTitle(title);
    box->setText(text);
    box->m_ui->btnCancel->setVisible(question);
    const int result = box->exec();
    delete box.data();
    return result;
}

void MediaMessageBox::showMessage(const QString &title, const QString &text, QWidget *parent)
{
    run(title, text, false, parent);
}

bool MediaMessageBox::ask(const QString &title, const QString &text, QWidget *parent)
{
    return run(title, text, true, parent) == Accepted;
}

void MediaMessageBox::on_btnOK_clicked()
{
    accept();
}

void MediaMessageBox::on_btnCancel_clicked()
{
    reject();
}
