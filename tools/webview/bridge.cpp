// SPDX-License-Identifier: MIT
#include "webview/bridge.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>

namespace {

constexpr struct
{
    ScriptValue::Kind kind;
    const char *letter;
} kindLetters[] = {
    {ScriptValue::Undefined, "u"}, {ScriptValue::Null, "0"},   {ScriptValue::Boolean, "b"},
    {ScriptValue::Number, "n"},    {ScriptValue::String, "s"}, {ScriptValue::Array, "a"},
};

ScriptValue fromJson(const QJsonValue &told)
{
    ScriptValue value;
    const QString letter = told[0].toString();
    for (const auto &row : kindLetters) {
        if (letter == QLatin1String(row.letter))
            value.kind = row.kind;
    }
    const QJsonValue content = told[1];
    value.isTrue = content.toBool();
    value.text = content.toString();
    const QJsonArray elements = content.toArray();
    for (const QJsonValue element : elements)
        value.elements.append(fromJson(element));
    return value;
}

QJsonArray toJson(const ScriptValue &value)
{
    QJsonArray told;
    for (const auto &row : kindLetters) {
        if (row.kind == value.kind)
            told.append(QLatin1String(row.letter));
    }
    if (value.kind == ScriptValue::Boolean) {
        told.append(value.isTrue);
    } else if (value.kind == ScriptValue::Array) {
        QJsonArray elements;
        for (const ScriptValue &element : value.elements)
            elements.append(toJson(element));
        told.append(elements);
    } else {
        told.append(value.text);
    }
    return told;
}

QString compact(const QJsonArray &array)
{
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

// JSON's strings are script's, too.
QString quoted(const QString &text)
{
    const QString list = compact({text});
    return list.mid(1, list.size() - 2);
}

// As location.origin has it; empty for what is no web page.
QString originOf(const QUrl &address)
{
    const QString scheme = address.scheme();
    const bool isSafe = scheme == QLatin1String("https");
    if ((!isSafe && scheme != QLatin1String("http")) || address.host().isEmpty())
        return {};
    QUrl origin;
    origin.setScheme(scheme);
    origin.setHost(address.host());
    if (address.port(-1) != (isSafe ? 443 : 80))
        origin.setPort(address.port(-1));
    return QString::fromLatin1(origin.toEncoded());
}

QString newKey()
{
    quint32 words[4];
    QRandomGenerator::system()->fillRange(words);
    return QString::fromLatin1(
        QByteArray::fromRawData(reinterpret_cast<char *>(words), sizeof words).toHex());
}

} // namespace

Bridge::Bridge() : m_key(newKey()) {}

void Bridge::setOrigin(const QUrl &address)
{
    m_origin = originOf(address);
}

void Bridge::bind(const QString &name, const ScriptFunction &function)
{
    m_functions.insert(name, function);
}

QString Bridge::documentScript() const
{
    if (m_origin.isEmpty())
        return {};
    QFile file(QStringLiteral(":/webview/bridge.js"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString script = QString::fromUtf8(file.readAll());
    // The names stand where a whole word has them; the start script comes last, as it may hold
    // them.
    script.replace(QStringLiteral("!== ORIGIN"), QStringLiteral("!== ") + quoted(m_origin));
    script.replace(QStringLiteral("of NAMES"),
                   QStringLiteral("of ") + compact(QJsonArray::fromStringList(m_functions.keys())));
    script.replace(QStringLiteral("ask(KEY"), QStringLiteral("ask(") + quoted(m_key));
    script.replace(QStringLiteral("    START\n"), m_startScript + QLatin1Char('\n'));
    return script;
}

QString Bridge::guarded(const QString &script) const
{
    if (m_origin.isEmpty())
        return {};
    return QStringLiteral("if (location.origin === %1) {\n%2\n}").arg(quoted(m_origin), script);
}

bool Bridge::answer(const QUrl &origin, const QString &message, const QString &call,
                    QString *result)
{
    if (message != m_key || m_origin.isEmpty() || originOf(origin) != m_origin)
        return false;
    const QJsonArray told = QJsonDocument::fromJson(call.toUtf8()).array();
    // A copy: the function may bind others.
    const ScriptFunction function = m_functions.value(told.at(0).toString());
    if (!function)
        return false;
    *result = compact(toJson(function(fromJson(told.at(1)).elements)));
    return true;
}
