// SPDX-License-Identifier: MIT
#include "controls/textctrl.h"

#include "platform/lettering.h"

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

void TextCtrl::setFilling(bool filling)
{
    m_isFilling = filling;
    update();
}

Lettering TextCtrl::lettering() const
{
    return {m_text, m_font, m_color, m_isFilling ? Lettering::roomyInset(m_font) : 0};
}

QSize TextCtrl::sizeHint() const
{
    return lettering().size();
}

void TextCtrl::paintEvent(QPaintEvent * /*event*/)
{
    if (m_text.isEmpty())
        return;
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const Lettering shown = lettering();
    const QSize own = shown.size();
    if (m_isFilling)
        painter.scale(double(width()) / own.width(), double(height()) / own.height());
    shown.paint(painter);
}
