// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/texteditdialog.h"

#include "controls/runmodal.h"
#include "platform/fontfile.h"
#include "ui_texteditdialog.h"

#include <QColorDialog>
#include <QIntValidator>
#include <QLineEdit>
#include <QShortcut>

namespace {

constexpr int sizes[] = {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 28, 36, 48, 72};
constexpr int leastSize = 6;
constexpr int mostSize = 720;
constexpr int usualPixels = 36;
const QLatin1String usualColor("#FFFFFF");

} // namespace

TextEditDialog::TextEditDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::TextEditDialog>())
{
    setObjectName(QStringLiteral("TextEditDialog"));
    setTitle(tr("文本水印"));
    setUpForm(*m_ui);
    for (const int size : sizes)
        m_ui->cbFontSize->addItem(QString::number(size));
    m_ui->cbFontSize->setValidator(new QIntValidator(leastSize, mostSize, this));
    connect(m_ui->cbFont->lineEdit(), &QLineEdit::textChanged, this, &TextEditDialog::showSample);
    on_btnReset_clicked();
    setUpKeys();
    m_ui->plainTextEdit->setFocus();
}

// The text takes Tab and Enter for itself.
void TextEditDialog::setUpKeys()
{
    const auto onCtrl = [this](Qt::Key key) {
        return new QShortcut(QKeySequence(Qt::CTRL + key), this);
    };
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        connect(onCtrl(enter), &QShortcut::activated, this, &TextEditDialog::on_btnOK_clicked);
    connect(onCtrl(Qt::Key_Tab), &QShortcut::activated, this, [this] { focusNextChild(); });
    m_ui->btnOK->setToolTip(tr("Ctrl+Enter"));
}

TextEditDialog::~TextEditDialog() = default;

QString TextEditDialog::text() const
{
    return m_ui->plainTextEdit->toPlainText();
}

void TextEditDialog::setText(const QString &text)
{
    m_ui->plainTextEdit->setPlainText(text);
    m_ui->plainTextEdit->moveCursor(QTextCursor::End);
}

QFont TextEditDialog::textFont() const
{
    QFont font;
    font.setFamily(m_ui->cbFont->lineEdit()->text());
    const int typed = m_ui->cbFontSize->currentText().toInt();
    font.setPixelSize(typed == 0 ? usualPixels : qBound(leastSize, typed, mostSize));
    return font;
}

void TextEditDialog::setTextFont(const QFont &font)
{
    setFamily(font.family());
    m_ui->cbFontSize->setEditText(QString::number(font.pixelSize()));
}

// A name that isn't installed stays: another desktop may have it.
void TextEditDialog::setFamily(const QString &family)
{
    m_ui->cbFont->setCurrentFont(QFont(family));
    m_ui->cbFont->setEditText(family);
    showSample();
}

void TextEditDialog::setColor(const QColor &color)
{
    m_color = color;
    m_ui->lblColor->setStyleSheet(QStringLiteral("background:%1").arg(color.name()));
}

// What is typed stands there in the face that the film will have.
void TextEditDialog::showSample()
{
    const QString family = m_ui->cbFont->lineEdit()->text();
    const QString nearest = nearestFontFamily(family);
    QFont font = m_ui->plainTextEdit->font();
    font.setFamily(nearest);
    m_ui->plainTextEdit->setFont(font);
    const bool isThere = family.isEmpty() || nearest == family;
    m_ui->lblFontHint->setText(isThere ? QString() : tr("未安装该字体，以“%1”显示").arg(nearest));
}

void TextEditDialog::on_WBtnColor_clicked()
{
    auto *dialog = new QColorDialog(Qt::white, this);
    dialog->setWindowTitle(tr("颜色对话框"));
    const auto chosen =
        runModal(dialog, [](const QColorDialog &colors) { return colors.selectedColor(); });
    if (chosen && chosen->isValid())
        setColor(*chosen);
}

void TextEditDialog::on_btnReset_clicked()
{
    setFamily(tr("微软雅黑"));
    m_ui->cbFontSize->setEditText(QString::number(usualPixels));
    setColor(QColor(usualColor));
}

void TextEditDialog::on_btnOK_clicked()
{
    accept();
}

void TextEditDialog::on_btnCancel_clicked()
{
    reject();
}
