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

void WatermarkMaskWidget::showGuides(const QVector<QLine> &guides)
{
    qDeleteAll(m_guides);
    m_guides.clear();
    for (const QLine &line : guides) {
        auto *guide = new QWidget(m_area);
        guide->setObjectName(QStringLiteral("maskGuide"));
        guide->setAttribute(Qt::WA_StyledBackground);
        guide->setAttribute(Qt::WA_TransparentForMouseEvents);
        guide->setGeometry(QRect(line.p1(), line.p2()));
        guide->show();
        m_guides += guide;
    }
}

QRegion WatermarkMaskWidget::guideRegion() const
{
    QRegion region;
    for (const QWidget *guide : m_guides)
        region += guide->geometry();
    return region;
}
