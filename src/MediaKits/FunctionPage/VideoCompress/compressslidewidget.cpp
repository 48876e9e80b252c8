// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressslidewidget.h"

#include "ui_compressslidewidget.h"

CompressSlideWidget::CompressSlideWidget(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::CompressSlideWidget>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->slider);
    connect(m_ui->slider, &QSlider::valueChanged, this, &CompressSlideWidget::valueChanged);
}

CompressSlideWidget::~CompressSlideWidget() = default;

int CompressSlideWidget::value() const
{
    return m_ui->slider->value();
}

void CompressSlideWidget::setValue(int value)
{
    m_ui->slider->setValue(value);
}
