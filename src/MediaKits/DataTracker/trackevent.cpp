// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/trackevent.h"

#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/volcdatatracker.h"

namespace {

constexpr int keyBehaviourEventId = 33;

} // namespace

void trackEvent(MediaFunction function, const QString &event, const QVariantMap &params)
{
    trackEvent(function, event, params, OskDataTracker::instance(), VolcDataTracker::instance());
}

void trackEvent(MediaFunction function, const QString &event, QVariantMap params,
                OskDataTracker &osk, VolcDataTracker &volc)
{
    if (event == QLatin1String("button_click"))
        params.insert(QStringLiteral("button_click"), functionRecord(function).title);
    if (event == QLatin1String("video_convert_start")) {
        osk.trackTableEvent(keyBehaviourEventId);
        params.insert(QStringLiteral("current_page"), functionRecord(function).title);
    }
    volc.event(event, params);
}
