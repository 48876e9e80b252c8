// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Page/outputfolderedit.h"

#include "controls/filechooser.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/MediaFormats/outputpath.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace {

constexpr int fieldHeight = 32;
constexpr int leastFieldWidth = 160;
constexpr int mostFieldWidth = 360;
constexpr int leastButtonWidth = 64;

QString meant(const QString &typed)
{
    return folderFrom(QDir::fromNativeSeparators(typed));
}

} // namespace

OutputFolderEdit::OutputFolderEdit(QWidget *parent)
    : QWidget(parent),
      m_function(),
      m_layout(new QHBoxLayout(this)),
      m_caption(new QLabel(this)),
      m_field(new QLineEdit(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(8);
    m_layout->addWidget(m_caption);
    m_field->setObjectName(QStringLiteral("ledtCustomPath"));
    m_field->setFixedHeight(fieldHeight);
    m_field->setMinimumWidth(leastFieldWidth);
    m_field->setMaximumWidth(mostFieldWidth);
    m_layout->addWidget(m_field);
    m_change = addButton(QStringLiteral("btnChangePath"), QString());
    setCaptions(tr("输出目录："), tr("更改"));
    connect(m_change, &QPushButton::clicked, this, &OutputFolderEdit::on_btnChangePath_clicked);
    connect(m_field, &QLineEdit::textChanged, this,
            &OutputFolderEdit::on_ledtCustomPath_textChanged);
    connect(m_field, &QLineEdit::editingFinished, this, &OutputFolderEdit::showMeantFolder);
    // Of a long one the beginning is to be seen, unless it is being typed.
    connect(m_field, &QLineEdit::textChanged, this, &OutputFolderEdit::showBeginning);
}

void OutputFolderEdit::setCaptions(const QString &field, const QString &change)
{
    m_caption->setText(field);
    m_field->setAccessibleName(QString(field).remove(QStringLiteral("：")));
    m_change->setText(change);
}

QPushButton *OutputFolderEdit::addButton(const QString &objectName, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setProperty("cls", QStringLiteral("plain"));
    button->setMinimumSize(leastButtonWidth, fieldHeight);
    m_layout->addWidget(button);
    return button;
}

void OutputFolderEdit::setFunction(MediaFunction function)
{
    m_function = function;
    m_field->setPlaceholderText(QDir::toNativeSeparators(defaultOutputDir(function)));
    const QString stored = FunctionSettings::instance()
                               .value(functionRecord(function).section, FunctionKey::outPath)
                               .toString();
    m_field->setText(QDir::toNativeSeparators(stored));
    emit folderChanged(folder());
}

QString OutputFolderEdit::folder() const
{
    const QString path = meant(m_field->text());
    return path.isEmpty() ? defaultOutputDir(m_function) : path;
}

void OutputFolderEdit::on_btnChangePath_clicked()
{
    const QString chosen =
        FileChooser::chooseDirectory(this, {tr("请选择文件"), QString(), folder()});
    if (!chosen.isEmpty())
        m_field->setText(QDir::toNativeSeparators(chosen));
}

void OutputFolderEdit::on_ledtCustomPath_textChanged(const QString &arg1)
{
    FunctionSettings::instance().setValue(functionRecord(m_function).section, FunctionKey::outPath,
                                          meant(arg1));
    emit folderChanged(folder());
    if (!m_field->isModified())
        emit folderChosen(folder());
}

void OutputFolderEdit::showBeginning()
{
    if (!m_field->hasFocus())
        m_field->setCursorPosition(0);
}

void OutputFolderEdit::showMeantFolder()
{
    const bool wasTyped = m_field->isModified();
    {
        const QSignalBlocker blocker(m_field);
        m_field->setText(QDir::toNativeSeparators(meant(m_field->text())));
    }
    if (wasTyped)
        emit folderChosen(folder());
}
