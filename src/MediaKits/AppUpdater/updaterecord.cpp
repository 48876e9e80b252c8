// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/updaterecord.h"

#include <QJsonDocument>
#include <QJsonObject>

std::optional<UpdateRecord> UpdateRecord::parse(const QByteArray &answer)
{
    const QJsonObject root = QJsonDocument::fromJson(answer).object();
    const QJsonValue code = root.value(QLatin1String("code"));
    const QJsonValue result = root.value(QLatin1String("data"))[QLatin1String("result")];
    if (!code.isDouble() || code.toDouble() != 0.0 || !result.isObject())
        return std::nullopt;
    UpdateRecord record;
    record.title = result[QLatin1String("title")].toString();
    record.tip = result[QLatin1String("tip")].toString();
    record.apkLink = result[QLatin1String("apkLink")].toString();
    record.forceUpgrade = result[QLatin1String("forceUpgrade")].toInt();
    return record;
}
