// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/filtergraph.h"

#include "platform/fontfile.h"

#include <QColor>
#include <QFont>
#include <QHash>

namespace {

const QString filterKey = QStringLiteral("__filter");
const QString inputsKey = QStringLiteral("__inputs");
const QString outputsKey = QStringLiteral("__outputs");
const QString valueKey = QStringLiteral("value");
const QString filtersKey = QStringLiteral("filters");

// Options named here print first and in this order.
const QStringList &optionOrder(const QString &filter)
{
    static const QHash<QString, QStringList> table = [] {
        const struct
        {
            const char *filter;
            const char *options;
        } rows[] = {
            {"overlay", "x y enable"},
            {"split", "enable"},
            {"movie", "enable"},
            {"crop", "w h x y enable"},
            {"scale", "w h enable"},
            {"lut", "a b enable"},
            {"eq", "contrast brightness saturation enable"},
            {"colorbalance", "bh bm bs gh gm gs rh rm rs pl"},
            {"setpts", "enable"},
            {"trim", "enable"},
            {"reverse", "enable"},
            {"delogo", "x y w h enable"},
            {"drawtext", "font fontfile fontsize fontcolor alpha y x text enable"},
            {"setsar", "sar dar enable"},
            {"pad", "width height x y enable"},
            {"vflip", "enable"},
            {"hflip", "enable"},
            {"atempo", "enable"},
            {"areverse", "enable"},
            {"adelay", "delays all enable"},
            {"volume", "volume precision enable"},
            {"amix", "inputs duration dropout_transition enable"},
            {"amovie", "enable"},
        };
        QHash<QString, QStringList> orders;
        for (const auto &row : rows)
            orders.insert(QLatin1String(row.filter),
                          QString(QLatin1String(row.options)).split(QLatin1Char(' ')));
        return orders;
    }();
    static const QStringList none;
    const auto it = table.constFind(filter);
    return it == table.constEnd() ? none : *it;
}

QString cachedFontFile(const QString &family)
{
    static QHash<QString, QString> hits;
    const auto it = hits.constFind(family);
    if (it != hits.constEnd())
        return *it;
    const QString path = fontFileOfFamily(family);
    if (!path.isEmpty())
        hits.insert(family, path);
    return path;
}

QString valueText(const QVariant &value)
{
    switch (int(value.type())) {
    case QVariant::String:
        return value.toString();
    case QVariant::Int:
        return QString::number(value.toInt());
    case QVariant::Double:
        return QString::number(value.toDouble(), 'g', 6);
    default:
        break;
    }
    if (value.canConvert<float>())
        return QString::number(double(value.toFloat()), 'g', 6);
    if (value.canConvert<QColor>())
        return value.value<QColor>().name().replace(QLatin1Char('#'), QLatin1String("0x"));
    if (value.canConvert<QFont>())
        return cachedFontFile(value.value<QFont>().family());
    return {};
}

QString optionText(const QString &key, const QVariant &value)
{
    return value.isValid() ? key + QLatin1Char('=') + valueText(value) : key;
}

QString labelsText(const QVariant &labels)
{
    QString text;
    const QStringList list = labels.toStringList();
    for (const QString &label : list)
        text += QLatin1Char('[') + label + QLatin1Char(']');
    return text;
}

QString argumentText(const QVariantMap &filter)
{
    if (filter.contains(valueKey))
        return filter.value(valueKey).toString();
    QVariantMap rest = filter;
    QStringList options;
    const QStringList &order = optionOrder(filter.value(filterKey).toString());
    for (const QString &key : order) {
        if (rest.contains(key))
            options += optionText(key, rest.take(key));
    }
    for (auto it = rest.cbegin(); it != rest.cend(); ++it) {
        if (!it.key().startsWith(QLatin1String("__")))
            options += optionText(it.key(), it.value());
    }
    return options.join(QLatin1Char(':'));
}

bool isMap(const QVariant &value)
{
    return value.type() == QVariant::Map;
}

QString chainText(const QVariantMap &chain)
{
    QStringList nodes;
    const QVariantList filters = chain.value(filtersKey).toList();
    for (const QVariant &filter : filters) {
        if (!isMap(filter))
            throw FFmpegFilterGraphException(QStringLiteral("非map类型"));
        nodes += FilterGraph::filterText(filter.toMap());
    }
    return nodes.join(QLatin1Char(','));
}

} // namespace

FilterGraph::FilterGraph(const QString &labelPrefix) : m_labelPrefix(labelPrefix) {}

QString FilterGraph::nextLabel()
{
    return m_labelPrefix + QString::number(m_nextIndex++);
}

void FilterGraph::addChain(const QVariantList &filters, const QStringList &inputs,
                           const QStringList &outputs)
{
    QVariantMap chain{{filtersKey, filters}};
    if (!inputs.isEmpty())
        chain.insert(inputsKey, inputs);
    if (!outputs.isEmpty())
        chain.insert(outputsKey, outputs);
    m_chains.append(chain);
}

QString FilterGraph::toString() const
{
    QStringList chains;
    for (const QVariant &entry : m_chains) {
        if (!isMap(entry))
            throw FFmpegFilterGraphException(QStringLiteral("不是map类型"));
        const QVariantMap chain = entry.toMap();
        chains += labelsText(chain.value(inputsKey)) + chainText(chain) +
                  labelsText(chain.value(outputsKey));
    }
    return chains.join(QLatin1Char(';'));
}

QString FilterGraph::filterText(const QVariantMap &filter)
{
    return labelsText(filter.value(inputsKey)) + filter.value(filterKey).toString() +
           QLatin1Char('=') + argumentText(filter) + labelsText(filter.value(outputsKey));
}

QVariantMap FilterGraph::filter(const QString &name, const QString &value)
{
    return {{filterKey, name}, {valueKey, value}};
}

QVariantMap FilterGraph::filter(const QString &name, QVariantMap options)
{
    options.insert(filterKey, name);
    return options;
}
