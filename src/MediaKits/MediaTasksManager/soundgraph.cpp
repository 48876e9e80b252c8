// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"
#include "MediaKits/MediaTasksManager/streamgraph.h"

namespace {

QString twoDecimals(float value)
{
    return QString::number(double(value), 'f', 2);
}

void appendTempoAndVolume(StreamGraph &graph, const VideoBeautyParam &beauty)
{
    if (!isNeutral(double(beauty.speed)))
        graph.append("atempo", twoDecimals(beauty.speed));
    if (!isNeutral(double(beauty.volume)))
        graph.append("volume", twoDecimals(beauty.volume));
    if (beauty.reverse)
        graph.append("areverse", QString());
}

QString factorText(const QVariant &factor)
{
    return QString::number(double(factor.toFloat()), 'g', 6);
}

QString addMusic(StreamGraph &graph, const QVariantMap &music)
{
    const QString path = music.value(QStringLiteral("filePath")).toString();
    const QString delay = QString::number(music.value(QStringLiteral("startTime")).toInt());
    return graph.addSource({
        FilterGraph::filter(QStringLiteral("amovie"), quoteFilterPath(path)),
        FilterGraph::filter(QStringLiteral("volume"),
                            factorText(music.value(QStringLiteral("volume")))),
        FilterGraph::filter(QStringLiteral("adelay"), delay + QLatin1Char('|') + delay),
    });
}

void appendDubbing(StreamGraph &graph, const QVariantMap &dubbing, double pictureMs)
{
    const QVariantList musics = dubbing.value(QStringLiteral("musics")).toList();
    QStringList mixInputs;
    for (const QVariant &music : musics)
        mixInputs += addMusic(graph, music.toMap());
    graph.flush();
    const bool hasSound = !graph.current().isEmpty();
    if (hasSound) {
        const bool keep = dubbing.value(QStringLiteral("isMax")).toBool();
        const QString factor =
            keep ? factorText(dubbing.value(QStringLiteral("videoVolume"))) : QStringLiteral("0");
        graph.addStep({FilterGraph::filter(QStringLiteral("volume"), factor)});
    } else if (musics.isEmpty()) {
        return;
    }
    // The video's own sound, or its absence, sets the length; music alone would run past the
    // picture, and so is cut at the picture's length.
    graph.append(
        FilterGraph::filter(QStringLiteral("amix"),
                            {{QStringLiteral("__inputs"), mixInputs},
                             {QStringLiteral("inputs"), musics.size() + (hasSound ? 1 : 0)},
                             {QStringLiteral("duration"),
                              hasSound ? QStringLiteral("first") : QStringLiteral("longest")}}));
    if (!hasSound && pictureMs > 0.0)
        graph.append("atrim", QStringLiteral("end=%1").arg(pictureMs / 1000.0));
}

} // namespace

QString audioGraphText(const ConvertTaskParam &param, int outputMs)
{
    const bool silent = param.sourceInfo && param.sourceInfo->audios.isEmpty();
    StreamGraph graph(QStringLiteral("art"), silent ? QString() : QStringLiteral("0:a"));
    const bool timed = param.beauty && !isNeutral(double(param.beauty->speed));
    const double pictureMs = timed ? outputMs / double(param.beauty->speed) : outputMs;
    if (param.beauty && !silent)
        appendTempoAndVolume(graph, *param.beauty);
    for (const QVariant &entry : param.audioFilters) {
        const QVariantMap dubbing = entry.toMap();
        if (dubbing.value(QStringLiteral("filter")).toString() == QLatin1String("dubbing"))
            appendDubbing(graph, dubbing, pictureMs);
    }
    if (!graph.hasPending())
        return {};
    graph.flush();
    return graph.text();
}
