// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/mediamessagebox.h"

#include "ui_mediamessagebox.h"

#include <QPointer>

MediaMessageBox::MediaMessageBox(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::MediaMessageBox>())
{
    setUpForm(*m_ui);
    setTitle(tr("提示"));
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
    // The parent may go while the box runs.
    const QPointer<MediaMessageBox> box = new MediaMessageBox(parent);
    box->setTitle(title);
    box->setText(text);
    box->exec();
    delete box.data();
}

void MediaMessageBox::on_btnOK_clicked()
{
    accept();
}
