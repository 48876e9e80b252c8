// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/sourcefacts.h"

#include "MediaKits/MediaInfo/shownpicture.h"

#include <QStringList>

namespace {

QStringList pictureFacts(const VEncParam &video, const PictureColours &colours)
{
    QStringList facts{QStringLiteral("size=%1x%2").arg(video.width).arg(video.height)};
    if (isUpright(video))
        facts += QStringLiteral("turned=1");
    if (video.frameRate > 0.0)
        facts += QStringLiteral("rate=%1").arg(video.frameRate);
    const auto addName = [&facts](const char *key, const QString &name) {
        if (!name.isEmpty())
            facts += QLatin1String(key) + QLatin1Char('=') + name;
    };
    addName("transfer", colours.transfer);
    addName("primaries", colours.primaries);
    addName("matrix", colours.matrix);
    return facts;
}

} // namespace

QString sourceFacts(const MediaInfoData &info, SourceCover cover)
{
    if (info.video)
        return pictureFacts(*info.video, info.colours).join(QLatin1Char(';'));
    if (!info.hasCover)
        return {};
    return cover == SourceCover::Lost ? QStringLiteral("cover=lost") : QStringLiteral("cover=1");
}
