// SPDX-License-Identifier: MIT
#include "cli/jsonfields.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <limits>

JsonFields::JsonFields(const QString &text, const QStringList &known)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    m_json = document.object();
    const QStringList keys = m_json.keys();
    m_areGood = document.isObject() &&
                std::all_of(keys.cbegin(), keys.cend(),
                            [&known](const QString &key) { return known.contains(key); });
}

QString JsonFields::text(const QString &key)
{
    const QString text = value(key).toString();
    refuseUnless(!has(key) || !text.isEmpty());
    return text;
}

double JsonFields::number(const QString &key, double fallback, double least, double most)
{
    if (!has(key))
        return fallback;
    const double number = value(key).toDouble();
    refuseUnless(value(key).isDouble() && number >= least && number <= most);
    return number;
}

int JsonFields::ms(const QString &key, int fallback)
{
    constexpr double secondMs = 1000.0;
    const double seconds =
        number(key, fallback / secondMs, 0.0, std::numeric_limits<int>::max() / secondMs);
    return m_areGood ? int(std::lround(seconds * secondMs)) : fallback;
}
