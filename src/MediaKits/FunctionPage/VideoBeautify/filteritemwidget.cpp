// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/filteritemwidget.h"

#include "controls/iconpixmap.h"
#include "controls/repolish.h"
#include "ui_filteritemwidget.h"

#include <QVariant>

namespace {
constexpr QSize pictureSize(64, 48);
}

FilterItemWidget::FilterItemWidget(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::FilterItemWidget>())
{
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("filterItem"));
}

FilterItemWidget::~FilterItemWidget() = default;

void FilterItemWidget::setChecked(bool checked)
{
    setProperty("checked", checked);
    repolish(this);
    for (QWidget *child : findChildren<QWidget *>())
        repolish(child);
}

void FilterItemWidget::setText(const QString &text)
{
    m_ui->lblText->setText(text);
}

void FilterItemWidget::setImage(const QString &file)
{
    m_ui->lblIcon->setPixmap(iconPixmap(file, pictureSize));
}
