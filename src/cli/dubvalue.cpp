// SPDX-License-Identifier: MIT
#include "cli/dubvalue.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace {

constexpr double mostFactor = 2.0;
constexpr double secondMs = 1000.0;

// The key's number within its bounds; nothing for anything else that stands there.
std::optional<double> numberOf(const QJsonObject &json, const char *key, double fallback,
                               double most)
{
    const QJsonValue value = json.value(QLatin1String(key));
    if (value.isUndefined())
        return fallback;
    if (!value.isDouble() || !(value.toDouble() >= 0.0 && value.toDouble() <= most))
        return std::nullopt;
    return value.toDouble();
}

bool hasOnly(const QJsonObject &json, const QStringList &known)
{
    const QStringList keys = json.keys();
    return std::all_of(keys.cbegin(), keys.cend(),
                       [&known](const QString &key) { return known.contains(key); });
}

} // namespace

std::optional<QVariantMap> parseDub(const QString &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    const QJsonObject json = document.object();
    const QString file = json.value(QLatin1String("file")).toString();
    const auto start = numberOf(json, "start", 0.0, std::numeric_limits<int>::max() / secondMs);
    const auto volume = numberOf(json, "volume", 1.0, mostFactor);
    const bool isKnown =
        hasOnly(json, {QStringLiteral("file"), QStringLiteral("start"), QStringLiteral("volume")});
    if (!document.isObject() || file.isEmpty() || !start || !volume || !isKnown)
        return std::nullopt;
    return QVariantMap{{QStringLiteral("filePath"), QDir::current().absoluteFilePath(file)},
                       {QStringLiteral("startTime"), int(std::lround(*start * secondMs))},
                       {QStringLiteral("volume"), float(*volume)}};
}

std::optional<float> parseFactor(const QString &text)
{
    bool isNumber = false;
    const double factor = text.toDouble(&isNumber);
    if (!isNumber || !(factor >= 0.0 && factor <= mostFactor))
        return std::nullopt;
    return float(factor);
}
