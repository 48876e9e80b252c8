// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/palettegraph.h"

#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/streamgraph.h"

namespace {

// Pixels that stand still keep the dots that they have been mixed from.
const QString steadyDots = QStringLiteral("diff_mode=rectangle");

QVariantMap filter(const char *name, const QString &value = {})
{
    return FilterGraph::filter(QLatin1String(name), value);
}

// The palette's picture comes behind all others. These are made tiny and go the same way, as their
// times are what tells how far the step is.
void appendChoice(StreamGraph &graph)
{
    const QStringList halves = graph.addChain({filter("split")}, {graph.current()}, 2);
    const QStringList palette = graph.addChain({filter("palettegen")}, {halves.first()}, 1);
    const QStringList marks = graph.addChain(
        {filter("scale", QStringLiteral("16:16")), filter("setsar", QStringLiteral("1"))},
        {halves.last()}, 1);
    graph.addChain({filter("concat")}, marks + palette, 1);
}

void appendUse(StreamGraph &graph, const QString &paletteFile)
{
    const QString palette = graph.addSource({filter("movie", quoteFilterPath(paletteFile))});
    QVariantMap use = filter("paletteuse", steadyDots);
    use.insert(QStringLiteral("__inputs"), QStringList(palette));
    graph.addStep({use});
}

} // namespace

bool hasOwnPalette(const ConvertTaskParam &param)
{
    return param.palette == GifPalette::Chosen || param.palette == GifPalette::Used;
}

void appendPalette(StreamGraph &graph, const ConvertTaskParam &param)
{
    if (param.palette == GifPalette::Chosen)
        appendChoice(graph);
    else if (param.palette == GifPalette::Used)
        appendUse(graph, param.paletteFile);
}
