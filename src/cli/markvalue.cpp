// SPDX-License-Identifier: MIT
#include "cli/markvalue.h"

#include "cli/jsonfields.h"
#include "cli/textvalues.h"
#include "platform/lettering.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QRectF>

#include <algorithm>

namespace {

const QString imageKey = QStringLiteral("image");
const QString textKey = QStringLiteral("text");
const QString rectKey = QStringLiteral("rect");
const QString opacityKey = QStringLiteral("opacity");
const QString fontKey = QStringLiteral("font");
const QString sizeKey = QStringLiteral("size");
const QString colorKey = QStringLiteral("color");
const QString fromKey = QStringLiteral("from");
const QString toKey = QStringLiteral("to");

// Those of the editor.
const QString usualFamily = QStringLiteral("微软雅黑");
constexpr int usualSize = 36;
constexpr int leastSize = 6;
constexpr int mostSize = 720;

constexpr double mostPixels = 1 << 20; // beyond any picture, on either side of it

// @param needsSize whether the last two numbers must be there
QRectF readRect(JsonFields &fields, bool needsSize)
{
    const QJsonArray given = fields.value(rectKey).toArray();
    fields.refuseUnless(given.size() == 4 || (given.size() == 2 && !needsSize));
    fields.refuseUnless(std::all_of(given.begin(), given.end(), [](const QJsonValue &side) {
        return side.isDouble() && qAbs(side.toDouble()) <= mostPixels;
    }));
    const QRectF rect(given.at(0).toDouble(), given.at(1).toDouble(), given.at(2).toDouble(),
                      given.at(3).toDouble());
    fields.refuseUnless(given.size() == 2 || !rect.isEmpty());
    return rect;
}

// An end of 0 stands for the whole film.
void readTimes(JsonFields &fields, QVariantMap &mark)
{
    const int from = fields.ms(fromKey);
    const int to = fields.ms(toKey, from > 0 ? behindAnyEndMs : 0);
    fields.refuseUnless(to > from || !fields.has(toKey));
    mark.insert(QStringLiteral("startTime"), from);
    mark.insert(QStringLiteral("endTime"), to);
}

void readText(JsonFields &fields, QVariantMap &mark)
{
    QFont font;
    const QString family = fields.text(fontKey);
    font.setFamily(family.isEmpty() ? usualFamily : family);
    font.setPixelSize(int(fields.number(sizeKey, usualSize, leastSize, mostSize)));
    const QColor color(fields.has(colorKey) ? fields.text(colorKey) : QStringLiteral("#ffffff"));
    fields.refuseUnless(color.isValid());
    const Lettering lettering{fields.text(textKey), font, color, Lettering::roomyInset(font)};
    QRectF rect = readRect(fields, false);
    if (rect.isEmpty() && qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        rect.setSize(lettering.size());
    mark.insert(QStringLiteral("filter"), QStringLiteral("drawtext"));
    mark.insert(textKey, lettering.text);
    mark.insert(fontKey, font);
    mark.insert(QStringLiteral("fontcolor"), color);
    mark.insert(rectKey, rect);
}

void readImage(JsonFields &fields, QVariantMap &mark)
{
    const QString file = fields.text(imageKey);
    mark.insert(QStringLiteral("filter"), QStringLiteral("watermark"));
    mark.insert(QStringLiteral("imagefile"), QDir::current().absoluteFilePath(file));
    mark.insert(textKey, QFileInfo(file).fileName());
    mark.insert(rectKey, readRect(fields, true));
}

} // namespace

std::optional<QVariantMap> parseWatermark(const QString &json)
{
    const QStringList common{rectKey, opacityKey, fromKey, toKey};
    const bool isText = JsonFields(json, {}).has(textKey);
    JsonFields fields(json, common + (isText ? QStringList{textKey, fontKey, sizeKey, colorKey}
                                             : QStringList{imageKey}));
    fields.refuseUnless(isText || fields.has(imageKey));
    QVariantMap mark;
    if (isText)
        readText(fields, mark);
    else
        readImage(fields, mark);
    mark.insert(opacityKey, fields.number(opacityKey, 1.0, 0.0, 1.0));
    readTimes(fields, mark);
    return fields.areGood() ? std::make_optional(mark) : std::nullopt;
}

std::optional<QVariantMap> parseDelogo(const QString &json)
{
    JsonFields fields(json, {rectKey, fromKey, toKey});
    QVariantMap mark{{QStringLiteral("filter"), QStringLiteral("delogo")},
                     {rectKey, readRect(fields, true)}};
    readTimes(fields, mark);
    return fields.areGood() ? std::make_optional(mark) : std::nullopt;
}
