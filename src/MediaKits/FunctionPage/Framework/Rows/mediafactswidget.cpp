// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/mediafactswidget.h"

#include <QGridLayout>
#include <QLabel>
#include <QVariant>

namespace {
// For "00:00:00" and its like, so that the labels of all rows stand below one another.
constexpr int inLineWidth = 64;
} // namespace

MediaFactsWidget::MediaFactsWidget(QWidget *parent) : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    m_format = addLabel(0, 0, tr("格式"));
    m_detail = addLabel(0, 1, QString());
    m_duration = addLabel(1, 0, tr("时长"));
    m_size = addLabel(1, 1, tr("大小"));
}

QLabel *MediaFactsWidget::addLabel(int row, int column, const QString &toolTip)
{
    auto *label = new QLabel(this);
    label->setProperty("cls", QStringLiteral("sub"));
    label->setToolTip(toolTip);
    label->setTextFormat(Qt::PlainText);
    static_cast<QGridLayout *>(layout())->addWidget(label, row, column);
    return label;
}

void MediaFactsWidget::setNames(QLatin1String side, QLatin1String detailName)
{
    const QString prefix = QLatin1String("lbl") + side;
    m_format->setObjectName(prefix + QLatin1String("Format"));
    m_detail->setObjectName(prefix + detailName);
    m_duration->setObjectName(prefix + QLatin1String("Duration"));
    m_size->setObjectName(prefix + QLatin1String("Size"));
}

void MediaFactsWidget::setSizeName(const QString &name, const QString &finishName)
{
    if (name.isEmpty())
        return;
    m_sizeName = addLabel(1, 1, m_size->toolTip());
    m_sizeName->setObjectName(m_size->objectName() + QLatin1String("Name"));
    m_sizeName->setProperty("FinishName", finishName);
    m_sizeName->setText(name);
    auto *both = new QHBoxLayout;
    both->setSpacing(0);
    both->addWidget(m_sizeName);
    both->addWidget(m_size, 1);
    // What has an estimated size has no length yet, and the name wants its room.
    m_duration->hide();
    static_cast<QGridLayout *>(layout())->addLayout(both, 1, 0, 1, 2);
}

void MediaFactsWidget::setCounting()
{
    m_detail->setObjectName(QStringLiteral("lblOutCount"));
    m_duration->setObjectName(QStringLiteral("lblOutStyle"));
    m_duration->setToolTip({});
}

void MediaFactsWidget::showFinishedSizeName()
{
    if (m_sizeName)
        m_sizeName->setText(m_sizeName->property("FinishName").toString());
}

void MediaFactsWidget::setInLine()
{
    auto *grid = static_cast<QGridLayout *>(layout());
    grid->setColumnStretch(1, 0);
    int column = 0;
    for (QLabel *label : {m_format, m_detail, m_duration, m_size}) {
        label->setFixedWidth(inLineWidth);
        grid->addWidget(label, 0, column++);
    }
}

void MediaFactsWidget::showFacts(const MediaFacts &facts)
{
    m_format->setText(facts.format);
    m_detail->setText(facts.detail);
    m_duration->setText(facts.duration);
    m_size->setText(facts.size);
}
