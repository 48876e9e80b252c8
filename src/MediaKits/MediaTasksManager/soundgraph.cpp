// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"
#include "MediaKits/MediaTasksManager/streamgraph.h"

#include <memory>

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

QString secondsText(int ms)
{
    return QString::number(ms / 1000.0, 'f', 3);
}

QVariantMap filter(const char *name, const QString &value)
{
    return FilterGraph::filter(QLatin1String(name), value);
}

// In a mix of its own choice ffmpeg takes the last sound's channels and rate for all.
QVariantMap shape(const SoundMix &mix)
{
    constexpr int surround = 6;
    constexpr int wideSurround = 8;
    QString text = QStringLiteral("channel_layouts=") +
                   (mix.channels == surround       ? QStringLiteral("5.1")
                    : mix.channels == wideSurround ? QStringLiteral("7.1")
                                                   : QStringLiteral("stereo"));
    if (mix.sampleRate > 0)
        text.prepend(QStringLiteral("sample_rates=%1:").arg(mix.sampleRate));
    return filter("aformat", text);
}

/// Dubbing as a record says it: ffmpeg makes all sounds quieter by their number, and louder again
/// when one of them ends.
class PlainDubbing
{
public:
    PlainDubbing(StreamGraph &graph, double pictureMs) : m_graph(graph), m_pictureMs(pictureMs) {}
    virtual ~PlainDubbing() = default;
    Q_DISABLE_COPY(PlainDubbing)

    void append(const QVariantMap &dubbing)
    {
        const QVariantList musics = dubbing.value(QStringLiteral("musics")).toList();
        QStringList mixInputs;
        for (const QVariant &music : musics)
            mixInputs += m_graph.addSource(musicFilters(music.toMap()));
        m_graph.flush();
        const bool hasSound = !m_graph.current().isEmpty();
        if (hasSound) {
            const bool keep = dubbing.value(QStringLiteral("isMax")).toBool();
            m_graph.addStep(
                ownFilters(keep ? factorText(dubbing.value(QStringLiteral("videoVolume")))
                                : QStringLiteral("0")));
        } else if (musics.isEmpty()) {
            return;
        }
        appendMix(mixInputs, hasSound);
    }

protected:
    virtual QVariantList musicFilters(const QVariantMap &music) const
    {
        return {movie(music), volume(music),
                filter("adelay", startText(music, QStringLiteral("%1|%1")))};
    }
    virtual QVariantList ownFilters(const QString &factor) const
    {
        return {filter("volume", factor)};
    }
    virtual QVariantMap mixOptions() const { return {}; }
    virtual QVariantList behindMix() const { return {}; }

    static QVariantMap movie(const QVariantMap &music)
    {
        return filter("amovie",
                      quoteFilterPath(music.value(QStringLiteral("filePath")).toString()));
    }
    static QVariantMap volume(const QVariantMap &music)
    {
        return filter("volume", factorText(music.value(QStringLiteral("volume"))));
    }
    static QString startText(const QVariantMap &music, const QString &form)
    {
        return form.arg(music.value(QStringLiteral("startTime")).toInt());
    }

private:
    // The video's own sound, or its absence, sets the length; music alone would run past the
    // picture, and so is cut at the picture's length.
    void appendMix(const QStringList &mixInputs, bool hasSound)
    {
        QVariantMap options = mixOptions();
        options.insert(QStringLiteral("__inputs"), mixInputs);
        options.insert(QStringLiteral("inputs"), mixInputs.size() + (hasSound ? 1 : 0));
        options.insert(QStringLiteral("duration"),
                       hasSound ? QStringLiteral("first") : QStringLiteral("longest"));
        m_graph.append(FilterGraph::filter(QStringLiteral("amix"), options));
        for (const QVariant &further : behindMix())
            m_graph.append(further.toMap());
        if (!hasSound && m_pictureMs > 0.0)
            m_graph.append("atrim", QStringLiteral("end=%1").arg(m_pictureMs / 1000.0));
    }

    StreamGraph &m_graph;
    const double m_pictureMs;
};

/// Dubbing as it is meant: each sound keeps its factor whatever becomes of the others, the video's
/// own sound stays in its time and lasts as long as the video, and a limiter takes what would be
/// too loud together.
class TrueDubbing : public PlainDubbing
{
public:
    TrueDubbing(StreamGraph &graph, const SoundMix &mix)
        : PlainDubbing(graph, mix.lengthMs), m_mix(mix)
    {
    }

protected:
    QVariantList musicFilters(const QVariantMap &music) const override
    {
        QVariantList filters{movie(music)};
        const int skipMs = music.value(QStringLiteral("skip")).toInt();
        if (skipMs > 0)
            filters += filter("atrim", QLatin1String("start=") + secondsText(skipMs));
        filters += filter("asetpts", QStringLiteral("PTS-STARTPTS"));
        filters += volume(music);
        filters += shape(m_mix);
        filters += filter("adelay", startText(music, QStringLiteral("delays=%1:all=1")));
        const int fadeAtMs = music.value(QStringLiteral("fadeAt"), m_mix.lengthMs).toInt();
        if (fadeAtMs < m_mix.lengthMs)
            filters += fade(fadeAtMs, music.value(QStringLiteral("fade")).toInt());
        return filters;
    }
    QVariantList ownFilters(const QString &factor) const override
    {
        QVariantList filters{filter("volume", factor), shape(m_mix)};
        if (m_mix.lengthMs > 0)
            filters += filter("apad", QLatin1String("whole_dur=") + secondsText(m_mix.lengthMs));
        return filters;
    }
    QVariantMap mixOptions() const override { return {{QStringLiteral("normalize"), 0}}; }
    QVariantList behindMix() const override
    {
        // A decibel below the most, which the wave between the samples and the coder need.
        return {filter("alimiter", QStringLiteral("level=0:latency=1:limit=0.891"))};
    }

private:
    static QVariantMap fade(int atMs, int ms)
    {
        return filter("afade",
                      QStringLiteral("t=out:st=%1:d=%2").arg(secondsText(atMs), secondsText(ms)));
    }

    const SoundMix m_mix;
};

std::unique_ptr<PlainDubbing> dubbingOf(const ConvertTaskParam &param, StreamGraph &graph,
                                        double pictureMs)
{
    if (param.soundMix)
        return std::make_unique<TrueDubbing>(graph, *param.soundMix);
    return std::make_unique<PlainDubbing>(graph, pictureMs);
}

} // namespace

QString audioGraphText(const ConvertTaskParam &param, int outputMs)
{
    const bool silent = param.sourceInfo && param.sourceInfo->audios.isEmpty();
    StreamGraph graph(QStringLiteral("art"), silent ? QString() : QStringLiteral("0:a"));
    const bool timed = param.beauty && !isNeutral(double(param.beauty->speed));
    const double pictureMs = timed ? outputMs / double(param.beauty->speed) : outputMs;
    // Mixing goes by samples: the sound has to begin with the video and to be without gaps.
    if (param.soundMix && !silent)
        graph.append("aresample", QStringLiteral("async=1:first_pts=0"));
    if (param.beauty && !silent)
        appendTempoAndVolume(graph, *param.beauty);
    const auto dubbing = dubbingOf(param, graph, pictureMs);
    for (const QVariant &entry : param.audioFilters) {
        const QVariantMap map = entry.toMap();
        if (map.value(QStringLiteral("filter")).toString() == QLatin1String("dubbing"))
            dubbing->append(map);
    }
    if (!graph.hasPending())
        return {};
    graph.flush();
    return graph.text();
}
