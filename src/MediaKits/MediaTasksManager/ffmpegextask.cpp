// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/ffmpegextask.h"

#include "MediaKits/MediaFormats/toolquoting.h"

namespace {

const QString optionsKey = QStringLiteral("options");
const QString nameKey = QStringLiteral("name");
const QString valueKey = QStringLiteral("value");
const QString outputUrlKey = QStringLiteral("outputUrl");

void appendOptions(QStringList &parts, const QVariantMap &holder)
{
    const QVariantList options = holder.value(optionsKey).toList();
    for (const QVariant &entry : options) {
        const QVariantMap option = entry.toMap();
        if (option.contains(nameKey))
            parts += option.value(nameKey).toString();
        if (option.contains(valueKey))
            parts += option.value(valueKey).toString();
    }
}

} // namespace

QVariantMap FFmpegExTask::option(const QString &name, const QVariant &value)
{
    QVariantMap map{{nameKey, name}};
    if (value.isValid())
        map.insert(valueKey, value);
    return map;
}

QString FFmpegExTask::commandText(const QVariantMap &tree)
{
    QStringList parts;
    appendOptions(parts, tree);
    const QVariantList inputs =
        tree.value(QStringLiteral("input")).toMap().value(QStringLiteral("inputs")).toList();
    for (const QVariant &entry : inputs) {
        const QVariantMap input = entry.toMap();
        appendOptions(parts, input);
        parts += QStringLiteral("-i");
        parts += quoteToolPath(input.value(QStringLiteral("inputUrl")).toString());
    }
    const QVariantMap output = tree.value(QStringLiteral("output")).toMap();
    if (output.contains(outputUrlKey)) {
        appendOptions(parts, output);
        parts += quoteToolPath(output.value(outputUrlKey).toString());
    }
    return parts.join(QLatin1Char(' '));
}

void FFmpegExTask::prepare()
{
    const QVariantMap tree = m_param->options.toMap();
    const int durationMs = tree.value(QStringLiteral("duration")).toInt();
    setBaseParam(new FFmpegTaskParam(commandText(tree), durationMs));
    FFmpegTask::prepare();
}
