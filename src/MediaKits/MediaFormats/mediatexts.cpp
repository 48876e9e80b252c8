// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/mediatexts.h"

#include <QTime>

namespace {
constexpr qint64 kib = 1024;
constexpr qint64 mib = 1024 * kib;
constexpr qint64 gib = 1024 * mib;

QString inUnit(qint64 bytes, qint64 unit, QLatin1String name)
{
    const float value = static_cast<float>(bytes) / static_cast<float>(unit);
    return QString::number(static_cast<double>(value), 'f', 2) + name;
}
} // namespace

QString timeText(int ms)
{
    return QTime(0, 0).addMSecs(ms).toString(QStringLiteral("hh:mm:ss"));
}

QString sizeText(qint64 bytes)
{
    if (bytes < kib)
        return QString::number(bytes) + QLatin1String(" B");
    if (bytes < mib)
        return inUnit(bytes, kib, QLatin1String(" KB"));
    if (bytes < gib)
        return inUnit(bytes, mib, QLatin1String(" MB"));
    return inUnit(bytes, gib, QLatin1String(" GB"));
}
