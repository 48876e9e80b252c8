// SPDX-License-Identifier: MIT
#include "cli/cataloguecommands.h"

#include "catalogue/encparamcatalog.h"
#include "cli/output.h"
#include "cli/recordjson.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonObject presetJson(const EncParam &preset)
{
    const QString category = EncParamCatalog::instance().titleOf(preset);
    return {
        {QStringLiteral("id"), qint64(preset.id)},
        {QStringLiteral("name"), preset.name},
        {QStringLiteral("category"), category.isEmpty() ? QJsonValue() : QJsonValue(category)},
        {QStringLiteral("formatId"), qint64(preset.formatID)},
        {QStringLiteral("keepSource"), EncParamCatalog::instance().isKeepSource(preset.id)},
        {QStringLiteral("video"), preset.video ? videoFields(*preset.video) : QJsonValue()},
        {QStringLiteral("audio"), preset.audio ? audioFields(*preset.audio) : QJsonValue()},
    };
}

QString presetLine(const EncParam &preset)
{
    QStringList facts;
    if (preset.video && preset.video->width > 0)
        facts += QStringLiteral("%1x%2").arg(preset.video->width).arg(preset.video->height);
    if (preset.video && preset.video->bitrate > 0)
        facts += QStringLiteral("%1 kbit/s").arg(preset.video->bitrate);
    if (preset.audio && preset.audio->sampleRate > 0)
        facts += QStringLiteral("%1 Hz").arg(preset.audio->sampleRate);
    if (preset.audio && preset.audio->bitrate > 0)
        facts += QStringLiteral("%1 kbit/s").arg(preset.audio->bitrate);
    const QString category = EncParamCatalog::instance().titleOf(preset);
    return QStringLiteral("%1  %2  %3  %4")
        .arg(QString::number(preset.id).leftJustified(8),
             (category.isEmpty() ? QStringLiteral("-") : category).leftJustified(5), preset.name,
             facts.join(QLatin1String(", ")));
}

} // namespace

int listCategories(const CommandLine &line)
{
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    QJsonArray array;
    for (const quint32 id : catalogue.categoryIds()) {
        const auto category = catalogue.category(id);
        array.append(QJsonObject{{QStringLiteral("id"), qint64(id)},
                                 {QStringLiteral("title"), category->title},
                                 {QStringLiteral("type"), category->type}});
        if (!line.json)
            printLine(QStringLiteral("%1  %2").arg(id).arg(category->title));
    }
    if (line.json)
        printJson(QJsonDocument(array));
    return 0;
}

int listPresets(const CommandLine &line)
{
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    QJsonArray array;
    for (const quint32 id : catalogue.encParamIds()) {
        const auto preset = catalogue.encParam(id);
        if (!line.category.isEmpty() && catalogue.titleOf(*preset) != line.category)
            continue;
        array.append(presetJson(*preset));
        if (!line.json)
            printLine(presetLine(*preset));
    }
    if (line.json)
        printJson(QJsonDocument(array));
    return 0;
}
