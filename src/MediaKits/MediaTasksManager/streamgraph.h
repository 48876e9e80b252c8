// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/filtergraph.h"

/// A filter graph under construction along one stream: filters gather in a pending chain, which
/// closes when something else has to be joined in.
class StreamGraph
{
public:
    /// @param labelPrefix in front of the number of each label
    /// @param source label of the stream; empty when there is none
    StreamGraph(const QString &labelPrefix, const QString &source);

    void append(const QVariantMap &filter) { m_pending.append(filter); }
    void append(const char *name, const QString &value);
    /// The filters gathered so far become a chain from the current label to a new one.
    void flush();
    /// Closes the stream in a chain of these filters and goes on behind it.
    void addStep(const QVariantList &filters);
    /// A chain that begins with a file or a generator; returns the label of its end.
    QString addSource(const QVariantList &filters);
    /// A chain besides the stream; returns the labels of its ends.
    QStringList addChain(const QVariantList &filters, const QStringList &inputs, int outputs);

    QString current() const { return m_current; }
    bool hasPending() const { return !m_pending.isEmpty(); }
    /// Nothing at all has been done to the stream.
    bool isPlain() const { return !hasPending() && text().isEmpty(); }
    QString text() const { return m_graph.toString(); }

private:
    FilterGraph m_graph;
    QString m_current;
    QVariantList m_pending;
};
