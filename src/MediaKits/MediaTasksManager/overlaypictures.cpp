// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/overlaypictures.h"

#include "MediaKits/MediaTasksManager/filealiases.h"
#include "MediaKits/MediaTasksManager/picturefile.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"
#include "platform/fontfile.h"
#include "platform/lettering.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QRectF>

#include <algorithm>
#include <cmath>

namespace {

const QString filterKey = QStringLiteral("filter");
const QString rectKey = QStringLiteral("rect");
const QString fontKey = QStringLiteral("font");
const QString imageKey = QStringLiteral("imagefile");
// Larger pictures take more memory than a text on a film is worth; the largest films have as many
// pixels.
constexpr int longestSide = 16384;
constexpr double mostPixels = 8192.0 * 4320;

bool isOf(const QVariantMap &overlay, const char *filter)
{
    return overlay.value(filterKey).toString() == QLatin1String(filter);
}

int evenNear(double value)
{
    return qRound(value / 2) * 2;
}

QSize evenSize(const QSizeF &size)
{
    return {std::max(evenNear(size.width()), 2), std::max(evenNear(size.height()), 2)};
}

// In its own shape.
QSize boundedSize(const QSizeF &size)
{
    const double longest = std::max({size.width(), size.height(), 1.0});
    const double pixels = std::max(size.width() * size.height(), 1.0);
    const double factor = std::min({1.0, longestSide / longest, std::sqrt(mostPixels / pixels)});
    return evenSize(size * factor);
}

// Pictures can be laid over others by even pixels only, and are cut to even sizes. Each side goes
// to the nearest, so that none is off by more than a pixel.
QRectF evenRect(const QRectF &rect)
{
    const QPointF corner(evenNear(rect.left()), evenNear(rect.top()));
    return {corner, QSizeF(evenSize({rect.right() - corner.x(), rect.bottom() - corner.y()}))};
}

// What of a text is seen on the picture, if that is known: the rest may be many times as large.
QRectF seenPart(const QRectF &whole, const QSize &frame)
{
    if (frame.isEmpty())
        return whole;
    const QRectF seen = whole & QRectF(QPointF(0, 0), evenSize(frame + QSize(1, 1)));
    return seen.isEmpty() ? QRectF(whole.topLeft(), QSizeF(2, 2)) : seen;
}

QImage painted(const Lettering &lettering, const QRectF &whole, const QRectF &part,
               const QSize &pixels)
{
    if (part == whole)
        return lettering.picture(pixels);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QSize own = lettering.size();
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.scale(pixels.width() / part.width(), pixels.height() / part.height());
    painter.translate(whole.topLeft() - part.topLeft());
    painter.scale(whole.width() / own.width(), whole.height() / own.height());
    lettering.paint(painter);
    return image;
}

// The letters are laid out at the size that was chosen, and fill the rectangle.
QVariantMap textAsPicture(QVariantMap overlay, FileAliases &aliases)
{
    QFont font = overlay.value(fontKey).value<QFont>();
    if (overlay.contains(chosenFontKey))
        font = overlay.value(chosenFontKey).value<QFont>();
    const Lettering lettering{overlay.value(QStringLiteral("text")).toString(), font,
                              overlay.value(QStringLiteral("fontcolor")).value<QColor>(),
                              Lettering::roomyInset(font)};
    const QRectF rect = overlay.value(rectKey).toRectF();
    const QSizeF size = rect.isEmpty() ? QSizeF(lettering.size()) : rect.size();
    const QRectF whole = evenRect(QRectF(rect.topLeft(), size));
    const QRectF part = seenPart(whole, overlay.value(frameKey).toSize());
    const QSize pixels = boundedSize(part.size());
    const QString file = aliases.forImage(painted(lettering, whole, part, pixels));
    if (file.isEmpty())
        return overlay;
    overlay[filterKey] = QStringLiteral("watermark");
    overlay[imageKey] = file;
    overlay[rectKey] = QRectF(part.topLeft(), pixels);
    return overlay;
}

QVariantMap withInstalledFace(QVariantMap overlay)
{
    QFont font = overlay.value(fontKey).value<QFont>();
    font.setFamily(nearestFontFamily(font.family()));
    overlay[fontKey] = font;
    return overlay;
}

// Ffmpeg refuses pictures of more than 268 million pixels, and takes some gigabytes for those of a
// little less.
bool isTooLarge(const QSize &picture)
{
    return double(picture.width()) * picture.height() > mostPixels;
}

// A drawing without pixels is unknown to ffmpeg.
bool isForFilter(const QByteArray &format)
{
    static const QByteArrayList formats = {"png", "jpg", "jpeg", "bmp", "webp", "gif"};
    return formats.contains(format.toLower());
}

QVariantMap withReadablePicture(QVariantMap overlay, FileAliases &aliases)
{
    const QString path = overlay.value(imageKey).toString();
    PictureFile picture(path);
    QImageReader &reader = picture.reader();
    QString file;
    const bool isTurned = reader.transformation() != QImageIOHandler::TransformationNone;
    const bool isHuge = isTooLarge(reader.size());
    if (!reader.format().isEmpty() && (isTurned || isHuge || !isForFilter(reader.format()))) {
        QSize size = boundedSize(overlay.value(rectKey).toRectF().size());
        if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
            size.transpose();
        if (isHuge || picture.isDrawing())
            reader.setScaledSize(size);
        file = aliases.forImage(reader.read());
    }
    overlay[imageKey] = file.isEmpty() ? aliases.forFilter(path) : file;
    overlay[rectKey] = evenRect(overlay.value(rectKey).toRectF());
    return overlay;
}

} // namespace

QVariantList overlayPictures(const QVariantList &overlays, FileAliases &aliases)
{
    const bool paints = qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
    QVariantList pictures;
    for (const QVariant &entry : overlays) {
        QVariantMap overlay = entry.toMap();
        if (isOf(overlay, "drawtext"))
            overlay = paints ? textAsPicture(overlay, aliases) : withInstalledFace(overlay);
        else if (overlay.contains(imageKey))
            overlay = withReadablePicture(overlay, aliases);
        pictures += overlay;
    }
    return pictures;
}

QString overlayProblem(const QVariantList &overlays)
{
    for (const QVariant &entry : overlays) {
        const QVariantMap overlay = entry.toMap();
        if (!isOf(overlay, "watermark"))
            continue;
        const QString path = overlay.value(imageKey).toString();
        const QString shown = QDir::toNativeSeparators(path);
        if (!QFileInfo(path).isFile())
            return QCoreApplication::translate("overlay", "找不到水印图片：%1").arg(shown);
        if (!PictureFile(path).reader().canRead())
            return QCoreApplication::translate("overlay", "无法读取水印图片：%1").arg(shown);
    }
    return {};
}
