// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/jsonwriter.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtMath>

namespace {

QByteArray escapeOf(char16_t unit)
{
    switch (unit) {
    case u'"':
        return QByteArrayLiteral("\\\"");
    case u'\\':
        return QByteArrayLiteral("\\\\");
    case u'\b':
        return QByteArrayLiteral("\\b");
    case u'\f':
        return QByteArrayLiteral("\\f");
    case u'\n':
        return QByteArrayLiteral("\\n");
    case u'\r':
        return QByteArrayLiteral("\\r");
    case u'\t':
        return QByteArrayLiteral("\\t");
    default:
        return QByteArrayLiteral("\\u") + QByteArray::number(unit, 16).rightJustified(4, '0');
    }
}

void appendText(const QString &text, QByteArray &json)
{
    json += '"';
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit < 0x20 || unit == u'"' || unit == u'\\')
            json += escapeOf(unit);
        else if (unit < 0x80)
            json += char(unit);
    }
    json += '"';
}

QByteArray numberText(const QJsonValue &value)
{
    // Whole numbers keep the digits that a double has no room for.
    const QVariant number = value.toVariant();
    if (number.userType() == QMetaType::LongLong)
        return QByteArray::number(number.toLongLong());
    if (!qIsFinite(value.toDouble()))
        return QByteArrayLiteral("null");
    static const QRegularExpression trailingZeros(QStringLiteral("\\.?0+$"));
    return QString::number(value.toDouble(), 'f', 6).remove(trailingZeros).toLatin1();
}

void appendValue(const QJsonValue &value, QByteArray &json);

void appendArray(const QJsonArray &array, QByteArray &json)
{
    json += '[';
    for (int i = 0; i < array.size(); ++i) {
        if (i > 0)
            json += ',';
        appendValue(array[i], json);
    }
    json += ']';
}

void appendObject(const QJsonObject &object, QByteArray &json)
{
    json += '{';
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it != object.begin())
            json += ',';
        appendText(it.key(), json);
        json += ':';
        appendValue(it.value(), json);
    }
    json += '}';
}

void appendValue(const QJsonValue &value, QByteArray &json)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        json += value.toBool() ? "true" : "false";
        break;
    case QJsonValue::Double:
        json += numberText(value);
        break;
    case QJsonValue::String:
        appendText(value.toString(), json);
        break;
    case QJsonValue::Array:
        appendArray(value.toArray(), json);
        break;
    case QJsonValue::Object:
        appendObject(value.toObject(), json);
        break;
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        json += "null";
        break;
    }
}

} // namespace

void JsonWriter::objectToJson(const QJsonObject &object, QByteArray &json)
{
    appendObject(object, json);
}
