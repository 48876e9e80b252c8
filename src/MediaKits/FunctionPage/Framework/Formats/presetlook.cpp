// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/presetlook.h"

#include "catalogue/encparamcatalog.h"
#include "controls/iconpixmap.h"

#include <QCoreApplication>

namespace {

constexpr quint32 videoKind = 1;
constexpr int videoType = 1;
constexpr QSize categoryIconSize(32, 38);
constexpr QSize presetIconSize(24, 24);

QString tr(const char *text)
{
    return QCoreApplication::translate("PresetLook", text);
}

QString sizeText(int width, int height)
{
    return QStringLiteral("%1*%2").arg(width).arg(height);
}

QString pictureText(const VEncParam *video, bool zeroSizeShown, const QSize &openSize)
{
    if (video && (video->width > 0 || zeroSizeShown))
        return sizeText(video->width, video->height);
    if (openSize.isEmpty())
        return tr("原视频分辨率");
    return tr("原视频分辨率 %1").arg(sizeText(openSize.width(), openSize.height()));
}

} // namespace

QPixmap categoryPixmap(const VADisplayCategory &category)
{
    const QString folder = category.type == videoType ? QStringLiteral(":/format/video/%1.png")
                                                      : QStringLiteral(":/format/audio/%1.png");
    return iconPixmap(folder.arg(category.icon), categoryIconSize);
}

QPixmap presetPixmap()
{
    return iconPixmap(QStringLiteral(":/format/video.png"), presetIconSize);
}

QString presetDetailText(const EncParam &preset, bool zeroSizeShown, const QSize &openSize)
{
    if (EncParamCatalog::categoryKind(preset.displayCategoryID) == videoKind)
        return pictureText(preset.video.data(), zeroSizeShown, openSize);
    if (!preset.audio)
        return tr("自动");
    return QStringLiteral("%1 Kbps").arg(preset.audio->bitrate);
}
