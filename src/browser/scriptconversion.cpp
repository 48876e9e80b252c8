// SPDX-License-Identifier: MIT
#include "browser/scriptconversion.h"

#include <QRegularExpression>

namespace {

ScriptValue listToScript(const QVariantList &list)
{
    ScriptValue array;
    array.kind = ScriptValue::Array;
    array.elements.reserve(list.size());
    for (const QVariant &element : list)
        array.elements.append(toScript(element));
    return array;
}

ScriptValue withText(ScriptValue::Kind kind, const QString &text)
{
    ScriptValue value;
    value.kind = kind;
    value.text = text;
    return value;
}

QString doubleText(double number)
{
    if (qIsInf(number))
        return number > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    return qIsNaN(number) ? QStringLiteral("NaN")
                          : QString::number(number, 'g', QLocale::FloatingPointShortest);
}

double numberOf(const QString &text)
{
    if (text.endsWith(QLatin1String("Infinity")))
        return text.startsWith(QLatin1Char('-')) ? -qInf() : qInf();
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? number : qQNaN();
}

QVariant numberFromScript(const QString &text)
{
    // A minus in front never matches, so that a negative number is a double.
    static const QRegularExpression digits(QStringLiteral("[-]?^\\d+$"));
    bool fits = false;
    const int whole = text.toInt(&fits);
    if (fits && digits.match(text).hasMatch())
        return whole;
    return numberOf(text);
}

} // namespace

ScriptValue toScript(const QVariant &value)
{
    switch (int(value.type())) {
    case QMetaType::Bool: {
        ScriptValue truth;
        truth.kind = ScriptValue::Boolean;
        truth.isTrue = value.toBool();
        return truth;
    }
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return withText(ScriptValue::Number, value.toString());
    case QMetaType::Double:
        return withText(ScriptValue::Number, doubleText(value.toDouble()));
    case QMetaType::QString:
        return withText(ScriptValue::String, value.toString());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return listToScript(value.toList());
    default:
        return withText(ScriptValue::Null, {});
    }
}

QVariant fromScript(const ScriptValue &value)
{
    switch (value.kind) {
    case ScriptValue::Boolean:
        return value.isTrue;
    case ScriptValue::Number:
        return numberFromScript(value.text);
    case ScriptValue::String:
        return value.text;
    case ScriptValue::Array:
        return fromScript(value.elements);
    case ScriptValue::Null:
    case ScriptValue::Undefined:
        break;
    }
    return {};
}

QVariantList fromScript(const QVector<ScriptValue> &values)
{
    QVariantList list;
    list.reserve(values.size());
    for (const ScriptValue &value : values)
        list.append(fromScript(value));
    return list;
}
