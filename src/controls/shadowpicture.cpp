// SPDX-License-Identifier: MIT
#include "controls/shadowpicture.h"

#include <QPainter>
#include <QPixmap>
#include <QVector>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstring>

// Exported by Qt Widgets, where its own drop shadow effect uses it, but declared in no header.
extern Q_WIDGETS_EXPORT void qt_blurImage(QPainter *painter, QImage &image, qreal radius,
                                          bool quality, bool alphaOnly, int transposed = 0);

namespace {

constexpr double blurPerRadius = 2.5;
// The blur falls to 2/255 within its radius and to nothing within two.
constexpr double reachPerBlur = 2.0;
// Rounded corners of windows are no larger, in pixels at 100 %.
constexpr int largestCorner = 16;

struct Segment
{
    int from;
    int fromLength;
    int to;
    int toLength;
};

// How one axis of a picture is laid out at another length.
QVector<Segment> segments(int from, int to, int corner)
{
    if (from == to)
        return {{0, from, 0, to}};
    return {{0, corner, 0, corner},
            {corner, 1, corner, to - 2 * corner},
            {from - corner, corner, to - corner, corner}};
}

// Whether nothing but the corners changes along the rows and columns of an 8 bit image.
bool isAlikeAlongEdges(const QImage &alpha, int corner)
{
    if (alpha.width() <= 2 * corner || alpha.height() <= 2 * corner)
        return false;
    const uchar *middleRow = alpha.constScanLine(corner);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *row = alpha.constScanLine(y);
        const bool inMiddle = y >= corner && y < alpha.height() - corner;
        if (inMiddle && std::memcmp(row, middleRow, size_t(alpha.width())) != 0)
            return false;
        const uchar *middle = row + corner;
        const uchar *end = row + alpha.width() - corner;
        if (std::any_of(middle, end, [middle](uchar value) { return value != *middle; }))
            return false;
    }
    return true;
}

QImage emptyImage(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

void ShadowPicture::forgetOutline()
{
    m_outline = {};
    m_picture = {};
}

void ShadowPicture::draw(QPainter *painter, QWidget *target, const ShadowLook &look)
{
    const double scale = painter->device()->devicePixelRatioF();
    const QSize size(qRound(target->width() * scale), qRound(target->height() * scale));
    updateOutline(target, size);
    updatePicture(size, scale, look);
    const int margin = qRound(look.radius * scale);
    painter->save();
    painter->scale(1 / scale, 1 / scale);
    drawStretched(painter, m_picture, size + QSize(2 * margin, 2 * margin));
    painter->restore();
}

void ShadowPicture::updateOutline(QWidget *target, const QSize &size)
{
    if (!target->testAttribute(Qt::WA_TranslucentBackground)) {
        m_outline = {QImage(1, 1, QImage::Format_Alpha8), 0, true};
        m_outline.image.fill(Qt::black);
        return;
    }
    const int least = 2 * m_outline.corner + 1;
    const bool fits = m_outline.stretches ? size.width() >= least && size.height() >= least
                                          : m_outline.image.size() == size;
    if (!m_outline.image.isNull() && fits)
        return;
    forgetOutline();
    QImage alpha = target->grab().toImage().convertToFormat(QImage::Format_Alpha8);
    alpha.setDevicePixelRatio(1);
    const int corner = qRound(largestCorner * target->devicePixelRatioF());
    if (!isAlikeAlongEdges(alpha, corner)) {
        m_outline = {alpha, 0, false};
        return;
    }
    const QSize small(2 * corner + 1, 2 * corner + 1);
    QImage corners = emptyImage(small);
    QPainter painter(&corners);
    drawStretched(&painter, {alpha, corner, true}, small);
    painter.end();
    m_outline = {corners, corner, true};
}

void ShadowPicture::updatePicture(const QSize &size, double scale, const ShadowLook &look)
{
    const int radius = qRound(look.radius * scale);
    const double blur = look.flat ? 0 : radius * blurPerRadius;
    const QPoint offset(qRound(look.offset.x() * scale), qRound(look.offset.y() * scale));
    const int shift = std::max(std::abs(offset.x()), std::abs(offset.y()));
    const int inner = m_outline.corner + shift + int(std::ceil(blur * reachPerBlur));
    const QSize basis = m_outline.stretches ? size.boundedTo({2 * inner + 1, 2 * inner + 1}) : size;
    const bool isCurrent = !m_picture.image.isNull() && basis == m_basis && look == m_look &&
                           qFuzzyCompare(scale, m_scale);
    if (isCurrent)
        return;
    m_basis = basis;
    m_look = look;
    m_scale = scale;

    const QSize grown = basis + QSize(2 * radius, 2 * radius);
    QImage outline = emptyImage(grown);
    {
        QPainter painter(&outline);
        painter.translate(QPoint(radius, radius) + offset);
        drawStretched(&painter, m_outline, basis);
    }
    QImage picture = emptyImage(grown);
    QPainter painter(&picture);
    if (look.flat)
        painter.drawImage(0, 0, outline);
    else
        qt_blurImage(&painter, outline, blur, false, true);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), look.colour);
    // The window itself stands at the middle of the picture less the offset.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.translate(QPoint(radius, radius) - offset);
    drawStretched(&painter, m_outline, basis);
    painter.end();
    m_picture = {picture, radius + inner, m_outline.stretches};
}

void ShadowPicture::drawStretched(QPainter *painter, const Stretchable &source, const QSize &size)
{
    const QVector<Segment> columns = segments(source.image.width(), size.width(), source.corner);
    const QVector<Segment> rows = segments(source.image.height(), size.height(), source.corner);
    for (const Segment &row : rows) {
        for (const Segment &column : columns) {
            const QRect from(column.from, row.from, column.fromLength, row.fromLength);
            const bool isBlank =
                from.size() == QSize(1, 1) && qAlpha(source.image.pixel(from.topLeft())) == 0;
            if (!isBlank && !from.isEmpty())
                painter->drawImage(QRect(column.to, row.to, column.toLength, row.toLength),
                                   source.image, from);
        }
    }
}
