// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"

bool isSeenAt(const QVariantMap &mark, int ms)
{
    const int end = mark.value(MarkKey::endTime).toInt();
    return end <= 0 || (mark.value(MarkKey::startTime).toInt() <= ms && ms <= end);
}

QVariantList plainMarks(const QVariantList &marks)
{
    QVariantList maps;
    for (const QVariant &mark : marks) {
        if (const auto map = mark.value<Mark>())
            maps += *map;
    }
    return maps;
}

QVariantList sharedMarks(const QVariantList &maps)
{
    QVariantList marks;
    for (const QVariant &map : maps)
        marks += QVariant::fromValue(Mark::create(map.toMap()));
    return marks;
}
