// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/overlaypictures.h"

#include "MediaKits/MediaTasksManager/filealiases.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"
#include "platform/fontfile.h"
#include "platform/lettering.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QRectF>

#include <algorithm>

namespace {

const QString filterKey = QStringLiteral("filter");
const QString rectKey = QStringLiteral("rect");
const QString fontKey = QStringLiteral("font");
const QString imageKey = QStringLiteral("imagefile");
// Larger ones than this side take more memory than a text on a film is worth.
constexpr int longestSide = 16384;

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
    const auto even = [](double side) { return std::clamp(evenNear(side), 2, longestSide); };
    return {even(size.width()), even(size.height())};
}

// Pictures can be laid over others by even pixels only, and are cut to even sizes: the nearest are
// better than those below.
QRectF evenRect(const QRectF &rect)
{
    return {QPointF(evenNear(rect.x()), evenNear(rect.y())), QSizeF(evenSize(rect.size()))};
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
    const QSize size = evenSize(rect.isEmpty() ? QSizeF(lettering.size()) : rect.size());
    const QString file = aliases.forImage(lettering.picture(size));
    if (file.isEmpty())
        return overlay;
    overlay[filterKey] = QStringLiteral("watermark");
    overlay[imageKey] = file;
    overlay[rectKey] = evenRect(QRectF(rect.topLeft(), size));
    return overlay;
}

QVariantMap withInstalledFace(QVariantMap overlay)
{
    QFont font = overlay.value(fontKey).value<QFont>();
    font.setFamily(nearestFontFamily(font.family()));
    overlay[fontKey] = font;
    return overlay;
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
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QString file;
    const bool isTurned = reader.transformation() != QImageIOHandler::TransformationNone;
    if (!reader.format().isEmpty() && (isTurned || !isForFilter(reader.format()))) {
        if (reader.format().startsWith("svg"))
            reader.setScaledSize(evenSize(overlay.value(rectKey).toRectF().size()));
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
        QImageReader reader(path);
        reader.setDecideFormatFromContent(true);
        if (!reader.canRead())
            return QCoreApplication::translate("overlay", "无法读取水印图片：%1").arg(shown);
    }
    return {};
}
