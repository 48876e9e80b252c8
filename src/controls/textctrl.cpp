// SPDX-License-Identifier: MIT
#include "controls/textctrl.h"

#include <QPainter>

#include <algorithm>

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

// The video's text filter sets lines a pixel closer than the font is high.
int TextCtrl::lineHeight() const
{
    const int fontHeight =
        m_font.pixelSize() > 0 ? m_font.pixelSize() : QFontMetrics(m_font, this).height();
    return fontHeight - 1;
}

QSize TextCtrl::sizeHint() const
{
    const QFontMetrics metrics(m_font, this);
    const QStringList lines = m_text.split(QLatin1Char('\n'));
    int width = 0;
    for (const QString &line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    // Letters hang over the last line by half of what the font is higher than its pixel size.
    const int overhang = std::max(0, metrics.height() - lineHeight() - 1) / 2;
    return {width, lines.size() * lineHeight() + overhang};
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
    int baseline = lineHeight() - (metrics.descent() - (metrics.height() - lineHeight() - 1) / 2);
    const QStringList lines = m_text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        painter.drawText(0, baseline, line);
        baseline += lineHeight();
    }
}
