// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/shotintervaledit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>

namespace {

constexpr int longestInterval = 600; // s
constexpr int usualInterval = 5;
constexpr int msOfSecond = 1000;
constexpr QSize fieldSize(120, 32);

} // namespace

ShotIntervalEdit::ShotIntervalEdit(QWidget *parent)
    : QWidget(parent), m_interval(new QSpinBox(this)), m_count(new QLabel(this))
{
    setObjectName(QStringLiteral("wdtTimeInterval"));
    m_interval->setObjectName(QStringLiteral("sbInterval"));
    m_interval->setRange(1, longestInterval);
    m_interval->setValue(usualInterval);
    m_interval->setSuffix(tr(" 秒"));
    m_interval->setAccessibleName(tr("截取间隔"));
    m_interval->setFixedSize(fieldSize);
    m_count->setObjectName(QStringLiteral("lblShotCount"));
    m_count->setProperty("cls", QStringLiteral("sub"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(new QLabel(tr("截取间隔："), this));
    row->addWidget(m_interval);
    row->addSpacing(8);
    row->addWidget(m_count, 1);
    connect(m_interval, qOverload<int>(&QSpinBox::valueChanged), this, &ShotIntervalEdit::changed);
}

int ShotIntervalEdit::intervalMs() const
{
    return m_interval->value() * msOfSecond;
}

void ShotIntervalEdit::showCount(int pictures)
{
    m_count->setText(tr("将截取 %1 张").arg(pictures));
}
