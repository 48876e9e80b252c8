// SPDX-License-Identifier: MIT
#include "platform/lettering.h"

#include "platform/fontfile.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int tabColumns = 4;
constexpr double roomyShare = 0.2; // of the font's pixel size

QStringList linesOf(const QString &text)
{
    QString plain = text;
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    plain.replace(QLatin1Char('\t'), QString(tabColumns, QLatin1Char(' ')));
    return plain.split(QLatin1Char('\n'));
}

// Without hinting letters keep their shape and their distance at every scale.
QFont drawnFont(const QFont &font)
{
    QFont drawn(font);
    drawn.setFamily(nearestFontFamily(font.family()));
    drawn.setHintingPreference(QFont::PreferNoHinting);
    return drawn;
}

int evenAbove(double size)
{
    return int(std::ceil(size / 2.0)) * 2;
}

struct Measures
{
    explicit Measures(const QFont &font) : metrics(font)
    {
        const double fontHeight = font.pixelSize() > 0 ? font.pixelSize() : metrics.height();
        lineHeight = fontHeight - 1;
        overhang = std::max(0.0, metrics.height() - fontHeight) / 2;
        baseline = lineHeight - (metrics.descent() - overhang);
    }

    QFontMetricsF metrics;
    double lineHeight; // lines stand a pixel closer than the font is high
    double overhang;   // letters hang over the last line by that
    double baseline;   // of the first line
};

} // namespace

int Lettering::roomyInset(const QFont &font)
{
    return std::max(1, int(std::ceil(font.pixelSize() * roomyShare)));
}

QSize Lettering::size() const
{
    const Measures measures(drawnFont(font));
    const QStringList lines = linesOf(text);
    double width = 0.0;
    for (const QString &line : lines)
        width = std::max(width, measures.metrics.horizontalAdvance(line));
    const double height = lines.size() * measures.lineHeight + measures.overhang;
    return {evenAbove(width + 2 * inset), evenAbove(height + 2 * inset)};
}

void Lettering::paint(QPainter &painter) const
{
    const QFont drawn = drawnFont(font);
    const Measures measures(drawn);
    painter.setFont(drawn);
    painter.setPen(color);
    double baseline = inset + measures.baseline;
    for (const QString &line : linesOf(text)) {
        painter.drawText(QPointF(inset, baseline), line);
        baseline += measures.lineHeight;
    }
}

QImage Lettering::picture(const QSize &pixels) const
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QSize own = size();
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.scale(double(pixels.width()) / own.width(), double(pixels.height()) / own.height());
    paint(painter);
    return image;
}
