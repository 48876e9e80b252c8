// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"

#include "controls/plaintooltip.h"
#include "controls/repolish.h"
#include "ui_complexedit.h"

#include <QKeyEvent>
#include <QResizeEvent>

namespace {
constexpr int fewCharacters = 8;
}

ComplexEdit::ComplexEdit(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ComplexEdit>())
{
    m_ui->setupUi(this);
    m_ui->edtText->hide();
    m_ui->lblText->installEventFilter(this);
    m_ui->edtText->installEventFilter(this);
    connect(m_ui->edtText, &QLineEdit::textChanged, this, &ComplexEdit::editTextChanged);
}

ComplexEdit::~ComplexEdit() = default;

QString ComplexEdit::text() const
{
    return m_ui->edtText->text();
}

void ComplexEdit::setText(const QString &text)
{
    m_ui->edtText->setText(text);
    showText();
}

void ComplexEdit::setSuffix(const QString &suffix)
{
    m_suffix = suffix;
    showText();
}

void ComplexEdit::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    setProperty("ReadOnly", readOnly);
    m_ui->btnEdit->setEnabled(!readOnly);
    if (readOnly && m_editing)
        on_edtText_editingFinished();
    repolish(this);
}

bool ComplexEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->lblText && event->type() == QEvent::Resize) {
        const int width = static_cast<QResizeEvent *>(event)->size().width();
        QMetaObject::invokeMethod(this, "afterMethod", Qt::QueuedConnection,
                                  Q_ARG(QVariant, QVariant(width)));
    } else if (watched == m_ui->edtText && event->type() == QEvent::ShortcutOverride) {
        // The keys that end the edit are neither shortcuts nor the dialog's.
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)
            event->accept();
    } else if (watched == m_ui->edtText && event->type() == QEvent::KeyPress) {
        return endsEdit(static_cast<QKeyEvent *>(event)->key());
    }
    return QWidget::eventFilter(watched, event);
}

bool ComplexEdit::endsEdit(int key)
{
    if (key != Qt::Key_Escape && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (key == Qt::Key_Escape)
        m_ui->edtText->setText(m_textBefore);
    m_ui->edtText->clearFocus();
    on_edtText_editingFinished();
    m_ui->btnEdit->setFocus();
    return true;
}

void ComplexEdit::afterMethod(const QVariant & /*var*/)
{
    showText();
}

void ComplexEdit::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    showText();
}

void ComplexEdit::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        showText();
}

void ComplexEdit::on_btnEdit_clicked()
{
    if (m_readOnly || m_editing)
        return;
    m_textBefore = text();
    setEditing(true);
    m_ui->edtText->setFocus();
}

void ComplexEdit::on_edtText_editingFinished()
{
    // Hiding the edit takes its focus, and that reports an end of its own.
    if (!m_editing)
        return;
    setEditing(false);
    showText();
    emit editingFinished();
}

void ComplexEdit::setEditing(bool editing)
{
    m_editing = editing;
    m_ui->wdtSpacer->setHidden(editing);
    m_ui->lblText->setHidden(editing);
    m_ui->btnEdit->setHidden(editing);
    m_ui->edtText->setVisible(editing);
}

void ComplexEdit::showText()
{
    const QString whole = text() + m_suffix;
    const QFontMetrics metrics = m_ui->lblText->fontMetrics();
    m_ui->lblText->setText(metrics.elidedText(whole, Qt::ElideMiddle, labelRoom()));
    setPlainToolTip(m_ui->lblText, whole);
    updateGeometry();
}

int ComplexEdit::labelRoom() const
{
    return contentsRect().width() - widthBesideLabel();
}

int ComplexEdit::widthBesideLabel() const
{
    const QPushButton *button = m_ui->btnEdit;
    const int buttonWidth = button->sizeHint().boundedTo(button->maximumSize()).width();
    return buttonWidth + m_ui->wdtSpacer->minimumWidth() + 2 * m_ui->horizontalLayout->spacing();
}

QSize ComplexEdit::sizeHint() const
{
    const int label = m_ui->lblText->fontMetrics().horizontalAdvance(text() + m_suffix) + 1;
    return {label + widthBesideLabel(), QWidget::sizeHint().height()};
}

QSize ComplexEdit::minimumSizeHint() const
{
    const int label = fewCharacters * m_ui->lblText->fontMetrics().averageCharWidth();
    return {label + widthBesideLabel(), QWidget::minimumSizeHint().height()};
}
