// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskwidget.h"

#include <QVBoxLayout>

namespace {
constexpr QSize defaultSize(503, 340);
} // namespace

WatermarkMaskWidget::WatermarkMaskWidget(QWidget *parent)
    : QWidget(parent), m_area(new QWidget(this))
{
    m_area->setObjectName(QStringLiteral("wdtMain"));
    m_area->setAttribute(Qt::WA_StyledBackground);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area);
    resize(defaultSize);
}
