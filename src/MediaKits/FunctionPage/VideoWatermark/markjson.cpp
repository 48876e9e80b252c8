// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markjson.h"

#include "MediaKits/FunctionPage/VideoWatermark/mark.h"

#include <QColor>
#include <QFont>
#include <QJsonArray>
#include <QRectF>

#include <algorithm>

namespace {

const QLatin1String sizeKey("size");
constexpr int leastSize = 6;
constexpr int mostSize = 720;
// In picture pixels, beyond any picture.
constexpr double farthest = 65536.0;

QVariantMap textFromJson(const QJsonObject &json)
{
    QFont font;
    font.setFamily(json[MarkKey::font].toString());
    font.setPixelSize(qBound(leastSize, json[sizeKey].toInt(), mostSize));
    const QColor color(json[MarkKey::fontcolor].toString());
    return {{MarkKey::font, font},
            {MarkKey::fontcolor, color.isValid() ? color : QColor(Qt::white)}};
}

} // namespace

QJsonObject markToJson(const QVariantMap &mark)
{
    QJsonObject json;
    for (const QString &key : {MarkKey::filter, MarkKey::text, MarkKey::startTime, MarkKey::endTime,
                               MarkKey::imagefile, MarkKey::aspectKeep}) {
        if (mark.contains(key))
            json[key] = QJsonValue::fromVariant(mark.value(key));
    }
    if (mark.contains(MarkKey::opacity))
        json[MarkKey::opacity] = mark.value(MarkKey::opacity).toDouble();
    const QRectF rect = mark.value(MarkKey::rect).toRectF();
    json[MarkKey::rect] = QJsonArray{rect.x(), rect.y(), rect.width(), rect.height()};
    if (mark.contains(MarkKey::font)) {
        const QFont font = mark.value(MarkKey::font).value<QFont>();
        json[MarkKey::font] = font.family();
        json[sizeKey] = font.pixelSize();
        json[MarkKey::fontcolor] = mark.value(MarkKey::fontcolor).value<QColor>().name();
    }
    return json;
}

QVariantMap markFromJson(const QJsonObject &json)
{
    const QString filter = json[MarkKey::filter].toString();
    const QJsonArray sides = json[MarkKey::rect].toArray();
    const auto side = [&sides](int index) {
        return qBound(-farthest, sides.at(index).toDouble(), farthest);
    };
    const QRectF rect(side(0), side(1), side(2), side(3));
    const bool isKnown =
        filter == MarkFilter::text || filter == MarkFilter::image || filter == MarkFilter::delogo;
    if (!isKnown || rect.width() < 1 || rect.height() < 1)
        return {};
    QVariantMap mark{{MarkKey::filter, filter},
                     {MarkKey::text, json[MarkKey::text].toString()},
                     {MarkKey::startTime, std::max(0, json[MarkKey::startTime].toInt())},
                     {MarkKey::endTime, std::max(0, json[MarkKey::endTime].toInt())},
                     {MarkKey::rect, rect}};
    if (json.contains(MarkKey::opacity))
        mark[MarkKey::opacity] = qBound(0.0, json[MarkKey::opacity].toDouble(), 1.0);
    if (filter == MarkFilter::text) {
        const QVariantMap text = textFromJson(json);
        for (auto key = text.begin(); key != text.end(); ++key)
            mark[key.key()] = key.value();
    }
    if (filter == MarkFilter::image) {
        mark[MarkKey::imagefile] = json[MarkKey::imagefile].toString();
        mark[MarkKey::aspectKeep] = json[MarkKey::aspectKeep].toBool(true);
    }
    return mark;
}
