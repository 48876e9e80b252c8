// SPDX-License-Identifier: MIT
#include "controls/progresswidget.h"

#include "controls/stylebackground.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr QRgb fillColour = 0xFFF5FAFF;
constexpr QRgb accentStart = 0xFF0088FF;
constexpr QRgb accentEnd = 0xFF00BDFF;
constexpr int accentWidth = 4;
// Narrower fills would show beside the row's rounded corner only.
constexpr int leastFill = 4;

void drawAccent(QPainter *painter, int width, int y)
{
    QLinearGradient gradient(200, 200, 100, 100);
    gradient.setColorAt(0, QColor::fromRgba(accentStart));
    gradient.setColorAt(1, QColor::fromRgba(accentEnd));
    painter->setPen(
        QPen(QBrush(gradient), accentWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter->drawLine(0, y, width - 2, y);
}

} // namespace

ProgressWidget::ProgressWidget(QWidget *parent) : QWidget(parent) {}

void ProgressWidget::setValue(int value)
{
    if (value == m_value)
        return;
    m_value = value;
    update();
}

void ProgressWidget::setMaximum(int maximum)
{
    m_maximum = maximum;
    update();
}

void ProgressWidget::setFlat(bool flat)
{
    m_flat = flat;
    update();
}

void ProgressWidget::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawStyleBackground(&painter, this);
    if (m_value < 0 || m_maximum <= 0)
        return;
    const int filled = int(std::trunc(double(m_value) / m_maximum * width() + 0.5));
    if (filled > leastFill) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgba(fillColour));
        painter.drawRect(QRect(QPoint(0, 0), QPoint(filled - 1, height() - 1)));
    }
    if (!m_flat)
        drawAccent(&painter, filled, height() - accentWidth);
}
