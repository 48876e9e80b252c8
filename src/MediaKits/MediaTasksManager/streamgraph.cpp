// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/streamgraph.h"

StreamGraph::StreamGraph(const QString &labelPrefix, const QString &source)
    : m_graph(labelPrefix), m_current(source)
{
}

void StreamGraph::append(const char *name, const QString &value)
{
    append(FilterGraph::filter(QLatin1String(name), value));
}

void StreamGraph::flush()
{
    if (m_pending.isEmpty())
        return;
    addStep(m_pending);
    m_pending.clear();
}

void StreamGraph::addStep(const QVariantList &filters)
{
    const QStringList source = m_current.isEmpty() ? QStringList() : QStringList(m_current);
    m_current = addChain(filters, source, 1).first();
}

QString StreamGraph::addSource(const QVariantList &filters)
{
    return addChain(filters, {}, 1).first();
}

QStringList StreamGraph::addChain(const QVariantList &filters, const QStringList &inputs,
                                  int outputs)
{
    QStringList labels;
    for (int i = 0; i < outputs; ++i)
        labels += m_graph.nextLabel();
    m_graph.addChain(filters, inputs, labels);
    return labels;
}
