// SPDX-License-Identifier: MIT
#include "controls/textctrl.h"

#include <QPainter>

TextCtrl::TextCtrl(QWidget *parent) : QWidget(parent) {}

void TextCtrl::setText(const QString &text)
{
    m_text = text;
    update();
}

void TextCtrl::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void TextCtrl::setFont(const QFont &font)
{
    m_font = font;
    update();
}

void TextCtrl::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void TextCtrl::paintEvent(QPaintEvent * /*event*/)
{
    if (m_text.isEmpty())
        return;
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.setFont(m_font);
    painter.setPen(m_color);
    const QFontMetrics metrics(m_font, this);
    const int fontHeight = m_font.pixelSize() > 0 ? m_font.pixelSize() : metrics.height();
    const int lineHeight = fontHeight - 1;
    int baseline = lineHeight - (metrics.descent() - (metrics.height() - fontHeight) / 2);
    const QStringList lines = m_text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        painter.drawText(0, baseline, line);
        baseline += lineHeight;
    }
}
