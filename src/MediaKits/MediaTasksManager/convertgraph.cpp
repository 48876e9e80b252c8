// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"

#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/neutralvalue.h"
#include "MediaKits/MediaTasksManager/palettegraph.h"
#include "MediaKits/MediaTasksManager/streamgraph.h"

#include <QColor>
#include <QFont>
#include <QRectF>

#include <cmath>

namespace {

constexpr double usualFrameRate = 25.0;
constexpr double secondMs = 1000.0;

bool isSilent(const ConvertTaskParam &param)
{
    return param.sourceInfo && param.sourceInfo->audios.isEmpty();
}

int evenBelow(int size)
{
    return size / 2 * 2;
}

void appendCrop(StreamGraph &graph, const CropBox &box)
{
    graph.append(FilterGraph::filter(QStringLiteral("crop"), {{QStringLiteral("w"), box.width},
                                                              {QStringLiteral("h"), box.height},
                                                              {QStringLiteral("x"), box.x},
                                                              {QStringLiteral("y"), box.y}}));
}

// Frames that don't stay need no size.
void appendRate(StreamGraph &graph, const ConvertTaskParam &param)
{
    const double rate =
        param.encParam && param.encParam->video ? param.encParam->video->frameRate : 0.0;
    if (rate <= 0)
        return;
    // Of less than half a frame, the filter would make none.
    const bool isShort = ConvertTask::outputDuration(param) * rate < secondMs;
    graph.append("fps", QString::number(rate, 'g', 6) +
                            (isShort ? QStringLiteral(":eof_action=pass") : QString()));
}

// Fits the picture into the preset's frame, with black bars to its full size.
void appendSize(StreamGraph &graph, const ConvertTaskParam &param)
{
    const QSharedPointer<VEncParam> target =
        param.encParam ? param.encParam->video : QSharedPointer<VEncParam>();
    int width = target ? evenBelow(target->width) : 0;
    int height = target ? evenBelow(target->height) : 0;
    const bool isSized = width > 0 && height > 0;
    if (param.cropRect && (isSized || param.cropsAlone))
        appendCrop(graph, *param.cropRect);
    if (!isSized)
        return;
    if (param.turnsFrame)
        std::swap(width, height);
    const QString w = QString::number(width);
    const QString h = QString::number(height);
    graph.append(
        "scale",
        QStringLiteral("'trunc(min(%1,%2*dar)/2)*2':'trunc(min(%1/dar,%2)/2)*2'").arg(w, h) +
            (hasOwnPalette(param) ? QStringLiteral(":flags=lanczos") : QString()));
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
        if (std::abs(double(channel.value)) <= tinyValue)
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
        {QStringLiteral("text"), escapeLiteralText(overlay.value("text").toString())},
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

void appendOverlays(StreamGraph &graph, const ConvertTaskParam &param)
{
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
}

// Black frames that are drawn from the sound, and so end with it, whose length need not be known.
void appendBlack(StreamGraph &graph, const ConvertTaskParam &param)
{
    const double rate =
        param.encParam && param.encParam->video ? param.encParam->video->frameRate : 0.0;
    graph.append("showwaves",
                 QStringLiteral("s=16x16:r=%1:colors=black").arg(rate > 0 ? rate : usualFrameRate));
    graph.append("format", QStringLiteral("yuv420p"));
}

// Silence that ends with the picture, whose length need not be known: the filter that joins
// segments fills up the sound of each to its picture, apart from the last one, so that an empty one
// follows. Returns the label of the picture.
QString appendSilence(StreamGraph &graph)
{
    const auto filter = [](const char *name, const char *value = "") {
        return FilterGraph::filter(QLatin1String(name), QLatin1String(value));
    };
    const QStringList halves = graph.addChain({filter("split")}, {graph.current()}, 2);
    const QString noPicture =
        graph.addChain({filter("trim", "end_frame=0")}, {halves.last()}, 1).first();
    const QString sound = graph.addSource({filter("anullsrc"), filter("atrim", "end=0.01")});
    const QString noSound = graph.addSource({filter("anullsrc"), filter("atrim", "end=0")});
    return graph
        .addChain({filter("concat", "n=2:v=1:a=1")}, {halves.first(), sound, noPicture, noSound}, 2)
        .first();
}

} // namespace

QString videoGraphText(const ConvertTaskParam &param)
{
    const bool black = param.picture == ResultPicture::Black;
    const bool silence = param.silentTrack && isSilent(param);
    if (!black && param.sourceInfo && !param.sourceInfo->video)
        return {};
    StreamGraph graph(QStringLiteral("vrt"), black ? QStringLiteral("0:a") : QStringLiteral("0:v"));
    if (param.picture == ResultPicture::None) {
        if (silence)
            graph.addChain({FilterGraph::filter(QStringLiteral("nullsink"))},
                           {appendSilence(graph)}, 0);
        return graph.text();
    }
    if (black)
        appendBlack(graph, param);
    if (hasOwnPalette(param))
        appendRate(graph, param);
    appendSize(graph, param);
    if (param.beauty)
        appendLook(graph, *param.beauty);
    appendOverlays(graph, param);
    if (param.picture == ResultPicture::OwnChain && graph.isPlain())
        graph.append("null", QString());
    graph.flush();
    appendPalette(graph, param);
    if (silence)
        appendSilence(graph);
    return graph.text();
}
