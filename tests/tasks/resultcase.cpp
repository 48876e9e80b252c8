// SPDX-License-Identifier: MIT
#include "tasks/resultcase.h"

#include <QColor>
#include <QPainter>
#include <QStringList>
#include <QTransform>
#include <QVector>

#include <algorithm>
#include <array>
#include <cmath>

const QRgb markColour = qRgb(200, 60, 190);

namespace {

constexpr int columns = 4;
constexpr int lines = 2;
constexpr int areas = columns * lines;
// Behind the areas of the source.
constexpr int bars = areas;
constexpr int marked = areas + 1;
constexpr int excluded = areas + 2;
// Dark enough that white and magenta stand out.
const std::array<QRgb, areas> colours = {qRgb(160, 40, 40),  qRgb(40, 130, 40),  qRgb(50, 50, 160),
                                         qRgb(140, 130, 30), qRgb(30, 130, 130), qRgb(90, 90, 90),
                                         qRgb(150, 80, 30),  qRgb(80, 40, 130)};
const ResultPreset presets[] = {
    {"same", {}, nullptr},
    {"sized", {240, 136}, "mp4"},
    {"boxed", {200, 200}, "mkv"},
    {"sound", {}, "m4a"},
};

QImage areaPicture(const QSize &size, const std::function<QRgb(int)> &colourOf)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int area = y * lines / size.height() * columns + x * columns / size.width();
            image.setPixel(x, y, colourOf(area));
        }
    }
    return image;
}

// What a picture of the source becomes: cropped, turned, flipped and fitted.
QImage through(const ResultCase &wanted, QImage image, QRgb barColour)
{
    if (wanted.crop)
        image = image.copy(cropOf(*wanted.source));
    image = image.transformed(QTransform().rotate(90.0 * wanted.turns));
    image = image.mirrored(wanted.hflip, wanted.vflip);
    if (wanted.preset->size.isEmpty())
        return image;
    const QSize fitted = image.size().scaled(wanted.preset->size, Qt::KeepAspectRatio);
    QImage frame(wanted.preset->size, QImage::Format_RGB32);
    frame.fill(barColour);
    QPainter(&frame).drawImage((frame.width() - fitted.width()) / 2,
                               (frame.height() - fitted.height()) / 2,
                               image.scaled(fitted, Qt::IgnoreAspectRatio));
    return frame;
}

// A mark moves and grows with the picture, but isn't turned.
QRect uprightMark(const ResultCase &wanted)
{
    QImage place(wanted.source->shown, QImage::Format_RGB32);
    place.fill(0);
    fill(place, markOf(*wanted.source), qRgb(255, 255, 255));
    const QRect turned =
        boundsOf(through(wanted, place, 0), [](QRgb pixel) { return qBlue(pixel) > 127; });
    QRect upright(QPoint(), wanted.isTurned() ? turned.size().transposed() : turned.size());
    upright.moveCenter(turned.center());
    return upright;
}

// Pixels at the edge of an area may be of either side.
bool isInside(const QImage &index, int x, int y)
{
    constexpr int edge = 3;
    const QRect around(x - edge, y - edge, 2 * edge + 1, 2 * edge + 1);
    if (!index.rect().contains(around))
        return false;
    const QRgb area = index.pixel(x, y);
    for (const QPoint &corner :
         {around.topLeft(), around.topRight(), around.bottomLeft(), around.bottomRight()}) {
        if (index.pixel(corner) != area)
            return false;
    }
    return true;
}

} // namespace

ResultCase::ResultCase(const QStringList &words)
    : crop(words[2] != "-"_s),
      turns(words[3].toInt()),
      hflip(words[4] == "h"_s),
      vflip(words[4] == "v"_s),
      speed(words[5].toInt()),
      mark(words[6]),
      music(words[7] != "-"_s)
{
    for (const ResultSource &candidate : sources()) {
        if (words[0] == QLatin1String(candidate.name))
            source = &candidate;
    }
    for (const ResultPreset &candidate : presets) {
        if (words[1] == QLatin1String(candidate.name))
            preset = &candidate;
    }
}

bool ResultCase::hasPicture() const
{
    return qstrcmp(preset->name, "sound") != 0;
}

QString ResultCase::suffix() const
{
    return QLatin1String(preset->suffix ? preset->suffix : source->suffix);
}

// ffmpeg's "rotate" tag of 90 shows the picture turned counter-clockwise.
const QVector<ResultSource> &ResultCase::sources()
{
    static const QVector<ResultSource> all = {
        {"land", {320, 180}, 0, 0, 1.0, true, "mp4"},
        {"tag90", {180, 320}, 90, 1, 1.0, true, "mp4"},
        {"tag270", {180, 320}, 270, 3, 1.0, true, "mp4"},
        {"wide", {320, 180}, 0, 0, 4.0 / 3.0, true, "mp4"},
        {"odd", {319, 181}, 0, 0, 1.0, true, "avi"},
        {"silent", {320, 180}, 0, 0, 1.0, false, "mp4"},
        {"mkv", {320, 180}, 0, 0, 1.0, true, "mkv"},
    };
    return all;
}

QRect markOf(const ResultSource &source)
{
    return {source.shown.width() / 4 + 8, source.shown.height() / 2 - 40, 60, 50};
}

QRect cropOf(const ResultSource &source)
{
    return {12, 10, source.shown.width() - 34, source.shown.height() - 30};
}

QRect inPixels(const QRect &rect, const ResultSource &source)
{
    return {qRound(rect.x() / source.pixelAspect), rect.y(),
            qRound(rect.width() / source.pixelAspect), rect.height()};
}

QImage shownPicture(const ResultSource &source)
{
    return areaPicture(source.shown, [](int area) { return colours[size_t(area)]; });
}

void fill(QImage &image, const QRect &rect, QRgb colour)
{
    QPainter(&image).fillRect(rect, QColor(colour));
}

QRect boundsOf(const QImage &image, const std::function<bool(QRgb)> &isMeant)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isMeant(image.pixel(x, y)))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

ExpectedPicture::ExpectedPicture(const ResultCase &wanted)
{
    picture = through(wanted, shownPicture(*wanted.source), qRgb(0, 0, 0));
    m_index = through(wanted,
                      areaPicture(wanted.source->shown, [](int area) { return qRgb(0, 0, area); }),
                      qRgb(0, 0, bars));
    mark = uprightMark(wanted);
    if (wanted.mark == "picture"_s) {
        fill(picture, mark, markColour);
        fill(m_index, mark, qRgb(0, 0, marked));
    } else if (wanted.mark == "text"_s) {
        fill(m_index, mark.adjusted(-4, -4, 4, 4), qRgb(0, 0, excluded));
    }
}

double ExpectedPicture::largestDifference(const QImage &shown, QString *report) const
{
    std::array<double, excluded + 1> sums{};
    std::array<int, excluded + 1> counts{};
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            const auto area = size_t(qBlue(m_index.pixel(x, y)));
            if (area >= excluded || !isInside(m_index, x, y))
                continue;
            const QRgb is = shown.pixel(x, y);
            const QRgb want = picture.pixel(x, y);
            sums[area] += std::abs(qRed(is) - qRed(want)) + std::abs(qGreen(is) - qGreen(want)) +
                          std::abs(qBlue(is) - qBlue(want));
            ++counts[area];
        }
    }
    double largest = 0.0;
    for (size_t area = 0; area < excluded; ++area) {
        // Bars and marks may be missing, an area of the source may not.
        const double unseen = area < areas ? 1.0 : 0.0;
        const double mean = counts[area] > 0 ? sums[area] / counts[area] / 3.0 / 255.0 : unseen;
        *report += "%1: %2  "_s.arg(area).arg(mean, 0, 'f', 3);
        largest = std::max(largest, mean);
    }
    return largest;
}
