// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/feedbackdialog.h"

#include "controls/filechooser.h"
#include "controls/toast.h"
#include "MediaKits/MainWindow/productcontact.h"
#include "ui_feedbackdialog.h"

#include <QTextCursor>

namespace {

constexpr int longestText = 200;
constexpr int reminderMs = 1000;
constexpr int thanksMs = 3000;

// The path as a string of a style sheet: it may hold any character.
QString quotedForStyle(QString path)
{
    path.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    path.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + path + QLatin1Char('"');
}

void remind(QWidget *field, const QString &text)
{
    Toast::showToast(text, reminderMs, Toast::centred, Toast::centred, field);
    field->setFocus();
}

} // namespace

FeedbackDialog::FeedbackDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::FeedbackDialog>())
{
    setUpForm(*m_ui);
    setTitle(tr("投诉建议"));
    m_ui->wdtWechat->setVisible(productContact().showPicture(*m_ui->lblHrWechat));
    on_plainTextEdit_textChanged();
    m_ui->plainTextEdit->setFocus();
}

FeedbackDialog::~FeedbackDialog() = default;

void FeedbackDialog::on_plainTextEdit_textChanged()
{
    const int length = m_ui->plainTextEdit->toPlainText().length();
    if (length > longestText) {
        // Changes the text, so that this slot runs again.
        cutSurplus(length - longestText);
        return;
    }
    m_ui->lblCharCount->setText(QStringLiteral("%1/%2").arg(length).arg(longestText));
}

// Takes away what was typed last, which ends at the cursor.
void FeedbackDialog::cutSurplus(int surplus)
{
    const QString text = m_ui->plainTextEdit->toPlainText();
    QTextCursor cursor = m_ui->plainTextEdit->textCursor();
    const int end = qMax(cursor.position(), surplus);
    int begin = end - surplus;
    // Half a character outside the basic plane is none.
    if (begin > 0 && text.at(begin).isLowSurrogate())
        --begin;
    cursor.setPosition(begin);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    m_ui->plainTextEdit->setTextCursor(cursor);
}

void FeedbackDialog::on_btnImage1_clicked()
{
    chooseImage(m_ui->btnImage1);
}

void FeedbackDialog::on_btnImage2_clicked()
{
    chooseImage(m_ui->btnImage2);
}

void FeedbackDialog::on_btnImage3_clicked()
{
    chooseImage(m_ui->btnImage3);
}

void FeedbackDialog::chooseImage(QPushButton *button)
{
    const QString path =
        FileChooser::chooseFile(this, {tr("文件对话框！"), tr("图片文件(*png *jpg);"), QString()});
    if (path.isEmpty())
        return;
    button->setIcon(QIcon());
    button->setStyleSheet(QStringLiteral("border-image:url(%1)").arg(quotedForStyle(path)));
}

void FeedbackDialog::on_btnSubmit_clicked()
{
    if (m_ui->plainTextEdit->toPlainText().isEmpty()) {
        remind(m_ui->plainTextEdit, tr("请输入建议反馈"));
        return;
    }
    if (m_ui->lineEdit->text().isEmpty()) {
        remind(m_ui->lineEdit, tr("请输入联系方式"));
        return;
    }
    accept();
    Toast::showToast(tr("提交成功"), thanksMs, Toast::centred, Toast::centred, parentWidget());
}
