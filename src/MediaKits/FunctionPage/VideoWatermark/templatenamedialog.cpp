// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/templatenamedialog.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

namespace {
constexpr QSize buttonSize(88, 32);
constexpr QSize nameSize(320, 32);
constexpr int margin = 16;
constexpr int longestName = 60;
} // namespace

TemplateNameDialog::TemplateNameDialog(QWidget *parent)
    : DialogFrame(parent), m_name(new QLineEdit(body()))
{
    setTitle(tr("存为模板"));
    m_name->setObjectName(QStringLiteral("editName"));
    m_name->setPlaceholderText(tr("模板名称"));
    m_name->setMaxLength(longestName);
    m_name->setMinimumSize(nameSize);
    auto *cancel = new QPushButton(tr("取消"), body());
    auto *ok = new QPushButton(tr("确定"), body());
    ok->setObjectName(QStringLiteral("btnOK"));
    ok->setProperty("cls", QStringLiteral("primary"));
    ok->setDefault(true);
    ok->setEnabled(false);
    connect(m_name, &QLineEdit::textChanged, ok, [this, ok] { ok->setEnabled(!name().isEmpty()); });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {cancel, ok}) {
        button->setMinimumSize(buttonSize);
        buttons->addWidget(button);
    }
    auto *layout = new QVBoxLayout(body());
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin);
    layout->addWidget(m_name);
    layout->addLayout(buttons);
}

QString TemplateNameDialog::name() const
{
    return m_name->text().trimmed();
}
