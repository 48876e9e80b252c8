// SPDX-License-Identifier: MIT
#include "cli/dubvalue.h"

#include "cli/jsonfields.h"

#include <QDir>

namespace {

constexpr double mostFactor = 2.0;

const QString fileKey = QStringLiteral("file");
const QString startKey = QStringLiteral("start");
const QString volumeKey = QStringLiteral("volume");

} // namespace

std::optional<QVariantMap> parseDub(const QString &text)
{
    JsonFields fields(text, {fileKey, startKey, volumeKey});
    fields.refuseUnless(fields.has(fileKey));
    const QString file = fields.text(fileKey);
    const int startMs = fields.ms(startKey);
    const double volume = fields.number(volumeKey, 1.0, 0.0, mostFactor);
    if (!fields.areGood())
        return std::nullopt;
    return QVariantMap{{QStringLiteral("filePath"), QDir::current().absoluteFilePath(file)},
                       {QStringLiteral("startTime"), startMs},
                       {QStringLiteral("volume"), float(volume)}};
}

std::optional<float> parseFactor(const QString &text)
{
    bool isNumber = false;
    const double factor = text.toDouble(&isNumber);
    if (!isNumber || !(factor >= 0.0 && factor <= mostFactor))
        return std::nullopt;
    return float(factor);
}
