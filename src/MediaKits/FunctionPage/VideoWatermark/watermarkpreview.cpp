// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/watermarkpreview.h"

#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/overlaypictures.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include <cmath>

namespace {

struct Turn
{
    const char *there;
    const char *back;
};

// The player's filters see the picture as it is coded, marks lie on it as it is shown.
Turn turnOf(const VEncParam &video)
{
    constexpr int quarter = 90;
    const int quarters = (qRound(video.rotate / quarter) % 4 + 4) % 4;
    const Turn turns[] = {{"", ""},
                          {"transpose=1", "transpose=2"},
                          {"hflip,vflip", "hflip,vflip"},
                          {"transpose=2", "transpose=1"}};
    return turns[quarters];
}

QString label(const char *name)
{
    return QStringLiteral("[%1]").arg(QLatin1String(name));
}

} // namespace

QString WatermarkPreview::graph(const QVariantList &marks)
{
    m_aliases.clear();
    ConvertTaskParam shown;
    shown.format = QStringLiteral("mp4");
    shown.sourceInfo = QSharedPointer<MediaInfoData>::create();
    shown.sourceInfo->video = QSharedPointer<VEncParam>::create(m_video);
    shown.videoFilters = marks;
    shown = mappedStep(shown);
    shown.videoFilters = overlayPictures(shown.videoFilters, m_aliases);
    QString text = videoGraphText(shown);
    if (text.isEmpty())
        return {};
    const Turn turn = turnOf(m_video);
    const bool isTurned = *turn.there != '\0';
    const QString source = QStringLiteral("[0:v]");
    text.replace(text.indexOf(source), source.size(), label(isTurned ? "upright" : "in"));
    text.truncate(text.lastIndexOf(QLatin1Char('[')));
    text += label(isTurned ? "marked" : "out");
    if (!isTurned)
        return text;
    return QStringLiteral("[in]%1[upright];%2;[marked]%3[out]")
        .arg(QLatin1String(turn.there), text, QLatin1String(turn.back));
}
