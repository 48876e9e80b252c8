// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"

#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/filtergraph.h"

#include <QColor>
#include <QFont>
#include <QRectF>

#include <cmath>

namespace {

// Below this a colour balance or a factor counts as nothing.
constexpr double tiny = 0.00001;

// At zero or at one, the two values at which a setting changes nothing.
bool isNeutral(double value)
{
    return std::abs(value) <= tiny ||
           std::abs(value - 1.0) * 100000 <= std::min(std::abs(value), 1.0);
}

// A graph under construction along one stream: filters gather in a pending chain, which closes
// when something else has to be joined in.
class StreamGraph
{
public:
    StreamGraph(const QString &labelPrefix, const QString &source)
        : m_graph(labelPrefix), m_current(source)
    {
    }

    void append(const QVariantMap &filter) { m_pending.append(filter); }
    void append(const char *name, const QString &value)
    {
        append(FilterGraph::filter(QLatin1String(name), value));
    }

    // The filters gathered so far become a chain from the current label to a new one.
    void flush()
    {
        if (m_pending.isEmpty())
            return;
        addStep(m_pending);
        m_pending.clear();
    }

    void addStep(const QVariantList &filters)
    {
        const QString label = m_graph.nextLabel();
        m_graph.addChain(filters, currentLabels(), {label});
        m_current = label;
    }

    // A chain that begins with a file; returns the label of its end.
    QString addSource(const QVariantList &filters)
    {
        const QString label = m_graph.nextLabel();
        m_graph.addChain(filters, {}, {label});
        return label;
    }

    bool hasCurrent() const { return !m_current.isEmpty(); }
    bool hasPending() const { return !m_pending.isEmpty(); }
    // Nothing at all has been done to the stream.
    bool isPlain() const { return !hasPending() && text().isEmpty(); }
    QString text() const { return m_graph.toString(); }

private:
    QStringList currentLabels() const
    {
        return m_current.isEmpty() ? QStringList() : QStringList(m_current);
    }

    FilterGraph m_graph;
    QString m_current;
    QVariantList m_pending;
};

int evenBelow(int size)
{
    return size / 2 * 2;
}

// Fits the picture into the preset's frame, with black bars to its full size.
void appendSize(StreamGraph &graph, const ConvertTaskParam &param)
{
    const QSharedPointer<VEncParam> target =
        param.encParam ? param.encParam->video : QSharedPointer<VEncParam>();
    const int width = target ? evenBelow(target->width) : 0;
    const int height = target ? evenBelow(target->height) : 0;
    if (width <= 0 || height <= 0)
        return;
    if (param.cropRect) {
        graph.append(FilterGraph::filter(QStringLiteral("crop"),
                                         {{QStringLiteral("w"), param.cropRect->width},
                                          {QStringLiteral("h"), param.cropRect->height},
                                          {QStringLiteral("x"), param.cropRect->x},
                                          {QStringLiteral("y"), param.cropRect->y}}));
    }
    const QString w = QString::number(width);
    const QString h = QString::number(height);
    graph.append(
        "scale",
        QStringLiteral("'trunc(min(%1,%2*dar)/2)*2':'trunc(min(%1/dar,%2)/2)*2'").arg(w, h));
    graph.append("setsar", QStringLiteral("1:1"));
    graph.append("pad", QStringLiteral("%1:%2:trunc((%1-iw)/2):trunc((%2-ih)/2):black").arg(w, h));
}

// One value a channel goes to its highlights, midtones and shadows, as the preview shows it.
void appendColourBalance(StreamGraph &graph, const VideoBeautyParam &beauty)
{
    const struct
    {
        char channel;
        float value;
    } channels[] = {{'r', beauty.red}, {'g', beauty.green}, {'b', beauty.blue}};
    QVariantMap options;
    for (const auto &channel : channels) {
        if (std::abs(double(channel.value)) <= tiny)
            continue;
        for (const char range : {'h', 'm', 's'})
            options.insert(QString(QLatin1Char(channel.channel)) + QLatin1Char(range),
                           channel.value);
    }
    if (!options.isEmpty())
        graph.append(FilterGraph::filter(QStringLiteral("colorbalance"), options));
}

void appendLook(StreamGraph &graph, const VideoBeautyParam &beauty)
{
    if (beauty.vflip)
        graph.append("vflip", QString());
    if (beauty.hflip)
        graph.append("hflip", QString());
    for (int turn = 0; turn < std::abs(beauty.rotate); ++turn)
        graph.append("transpose", beauty.rotate > 0 ? QStringLiteral("1") : QStringLiteral("2"));
    const bool plain = isNeutral(double(beauty.contrast)) && isNeutral(double(beauty.brightness)) &&
                       isNeutral(double(beauty.saturation));
    if (!plain) {
        graph.append(FilterGraph::filter(QStringLiteral("eq"),
                                         {{QStringLiteral("contrast"), beauty.contrast},
                                          {QStringLiteral("brightness"), beauty.brightness},
                                          {QStringLiteral("saturation"), beauty.saturation}}));
    }
    appendColourBalance(graph, beauty);
    if (!isNeutral(double(beauty.speed)))
        graph.append("setpts",
                     QString::number(1.0 / double(beauty.speed), 'g', 6) + QLatin1String("*PTS"));
    if (beauty.reverse)
        graph.append("reverse", QString());
}

// A copy of an overlay's own settings: its rectangle in whole pixels and its time.
struct Overlay
{
    explicit Overlay(const QVariantMap &map)
        : entry(map), rect(map.value(QStringLiteral("rect")).toRectF())
    {
        x = qRound(rect.x());
        y = qRound(rect.y());
        width = qRound(rect.width());
        height = qRound(rect.height());
    }

    QVariant value(const char *key) const { return entry.value(QLatin1String(key)); }

    // Whole seconds, since the text of the interval has none finer.
    void addInterval(QVariantMap &options) const
    {
        const int end = value("endTime").toInt();
        if (end > 0) {
            options.insert(QStringLiteral("enable"), QStringLiteral("'between(t,%1,%2)'")
                                                         .arg(value("startTime").toInt() / 1000)
                                                         .arg(end / 1000));
        }
    }

    QVariantMap entry;
    QRectF rect;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// ffmpeg wants the rectangle to leave at least one pixel of the picture around it.
void appendDelogo(StreamGraph &graph, const Overlay &overlay, const ConvertTaskParam &param)
{
    const QSharedPointer<VEncParam> source =
        param.sourceInfo ? param.sourceInfo->video : QSharedPointer<VEncParam>();
    const int sourceWidth = source ? source->width : 0;
    const int sourceHeight = source ? source->height : 0;
    const int x = std::max(overlay.x, 1);
    const int y = std::max(overlay.y, 1);
    const bool overRight = sourceWidth <= overlay.x + overlay.width;
    const bool overBottom = sourceHeight <= overlay.y + overlay.height;
    QVariantMap options{
        {QStringLiteral("x"), x},
        {QStringLiteral("y"), y},
        {QStringLiteral("w"), overRight ? sourceWidth - x - 1 : overlay.width},
        {QStringLiteral("h"), overBottom ? sourceHeight - y - 1 : overlay.height},
    };
    overlay.addInterval(options);
    graph.append(FilterGraph::filter(QStringLiteral("delogo"), options));
}

// Left alone, "%" would begin an expansion, and a text with any other use of it would not show.
QString literalText(const QString &text)
{
    return escapeDrawtextText(text).replace(QLatin1Char('%'), QLatin1String("\\\\\\\\%"));
}

void appendDrawtext(StreamGraph &graph, const Overlay &overlay)
{
    const QFont font = overlay.value("font").value<QFont>();
    QVariantMap options{
        {QStringLiteral("x"), overlay.x},
        {QStringLiteral("y"), overlay.y},
        // A family's name is text like any other; plain names pass unchanged.
        {QStringLiteral("font"), escapeDrawtextText(font.family())},
        {QStringLiteral("fontsize"), font.pixelSize()},
        {QStringLiteral("fontcolor"), overlay.value("fontcolor").value<QColor>()},
        {QStringLiteral("alpha"), overlay.value("opacity").toFloat()},
        {QStringLiteral("text"), literalText(overlay.value("text").toString())},
    };
    overlay.addInterval(options);
    graph.append(FilterGraph::filter(QStringLiteral("drawtext"), options));
}

void appendWatermark(StreamGraph &graph, const Overlay &overlay)
{
    QVariantList picture{
        FilterGraph::filter(QStringLiteral("movie"),
                            quoteFilterPath(overlay.value("imagefile").toString())),
        FilterGraph::filter(QStringLiteral("scale"),
                            QVariantMap{{QStringLiteral("w"), evenBelow(overlay.width)},
                                        {QStringLiteral("h"), evenBelow(overlay.height)}}),
    };
    if (overlay.entry.contains(QStringLiteral("opacity"))) {
        const double opacity = double(overlay.value("opacity").toFloat());
        picture.append(FilterGraph::filter(
            QStringLiteral("lut"),
            QVariantMap{
                {QStringLiteral("a"), QLatin1String("val*") + QString::number(opacity, 'g', 6)}}));
    }
    const QString label = graph.addSource(picture);
    graph.flush();
    QVariantMap options{
        {QStringLiteral("__inputs"), QStringList(label)},
        {QStringLiteral("x"), overlay.x},
        {QStringLiteral("y"), overlay.y},
    };
    overlay.addInterval(options);
    graph.append(FilterGraph::filter(QStringLiteral("overlay"), options));
}

bool isSilent(const ConvertTaskParam &param)
{
    return param.sourceInfo && param.sourceInfo->audios.isEmpty();
}

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
    const bool hasSound = graph.hasCurrent();
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

QString videoGraphText(const ConvertTaskParam &param)
{
    if (param.sourceInfo && !param.sourceInfo->video)
        return {};
    StreamGraph graph(QStringLiteral("vrt"), QStringLiteral("0:v"));
    appendSize(graph, param);
    if (param.beauty)
        appendLook(graph, *param.beauty);
    for (const QVariant &entry : param.videoFilters) {
        const Overlay overlay(entry.toMap());
        const QString kind = overlay.value("filter").toString();
        if (kind == QLatin1String("delogo"))
            appendDelogo(graph, overlay, param);
        else if (kind == QLatin1String("drawtext"))
            appendDrawtext(graph, overlay);
        else if (kind == QLatin1String("watermark"))
            appendWatermark(graph, overlay);
    }
    // The outputs of graphs come before all other streams, and the picture before the sound.
    if (param.silentTrack && isSilent(param) && graph.isPlain())
        graph.append("null", QString());
    graph.flush();
    return graph.text();
}

QString audioGraphText(const ConvertTaskParam &param, int outputMs)
{
    const bool silent = isSilent(param);
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
    if (param.silentTrack && silent && graph.isPlain() && pictureMs > 0.0) {
        graph.append("anullsrc", QString());
        graph.append("atrim", QStringLiteral("end=%1").arg(pictureMs / 1000.0));
    }
    if (!graph.hasPending())
        return {};
    graph.flush();
    return graph.text();
}
