// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/videomaskchop.h"

#include <QPainter>
#include <QStyleOption>

namespace {

const QColor frameColour(0x00, 0x88, 0xff);
// Pens in pixels; half of each lies outside the widget.
constexpr int framePen = 4;
constexpr int handlePen = 10;
constexpr int cornerLength = 16;
constexpr int halfMiddle = 8;

// Two strokes at each corner, one in the middle of each side.
QVector<QLine> handles(int w, int h)
{
    const int x = w / 2;
    const int y = h / 2;
    return {
        {0, 0, cornerLength, 0},
        {0, 0, 0, cornerLength},
        {w - cornerLength, 0, w, 0},
        {w, 0, w, cornerLength},
        {0, h, cornerLength, h},
        {0, h - cornerLength, 0, h},
        {w - cornerLength, h, w, h},
        {w, h - cornerLength, w, h},
        {x - halfMiddle, 0, x + halfMiddle, 0},
        {x - halfMiddle, h, x + halfMiddle, h},
        {0, y - halfMiddle, 0, y + halfMiddle},
        {w, y - halfMiddle, w, y + halfMiddle},
    };
}

} // namespace

VideoMaskChop::VideoMaskChop(QWidget *parent) : QWidget(parent) {}

void VideoMaskChop::setHandlesVisible(bool visible)
{
    m_handlesVisible = visible;
    update();
}

QRegion VideoMaskChop::drawnRegion() const
{
    const int band = handlePen / 2;
    return QRegion(rect()) - QRegion(rect().adjusted(band, band, -band, -band));
}

void VideoMaskChop::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    painter.setPen(QPen(frameColour, framePen, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect());
    if (!m_handlesVisible)
        return;
    painter.setPen(QPen(frameColour, handlePen, Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(handles(width(), height()));
}
