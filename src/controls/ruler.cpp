// SPDX-License-Identifier: MIT
#include "controls/ruler.h"

#include "controls/stylebackground.h"

#include <QPainter>

Ruler::Ruler(QWidget *parent) : QWidget(parent) {}

void Ruler::setMaximum(int maximum)
{
    m_maximum = maximum;
    update();
}

void Ruler::setMinimum(int minimum)
{
    m_minimum = minimum;
    update();
}

void Ruler::setStep(int step)
{
    m_step = step;
    update();
}

void Ruler::setSuffix(const QString &suffix)
{
    m_suffix = suffix;
    update();
}

void Ruler::setRuleMargins(const QMargins &margins)
{
    m_ruleMargins = margins;
    update();
}

void Ruler::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void Ruler::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawStyleBackground(&painter, this);
    const int count = m_step != 0 ? (m_maximum - m_minimum) / m_step : 0;
    if (count <= 0)
        return;
    const int spacing = (width() - m_ruleMargins.left() - m_ruleMargins.right()) / count;
    for (int i = 0; i <= count; ++i) {
        const QString text = QString::number(m_minimum + i * m_step) + m_suffix;
        const int textWidth = fontMetrics().horizontalAdvance(text);
        const QRect place(i * spacing - textWidth + m_ruleMargins.left(), m_ruleMargins.top(),
                          2 * textWidth, height() - m_ruleMargins.bottom());
        painter.drawText(place, int(m_alignment), text);
    }
}
