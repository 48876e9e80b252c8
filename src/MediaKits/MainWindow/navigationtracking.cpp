// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/navigationtracking.h"

#include "MediaKits/DataTracker/currentfunction.h"
#include "MediaKits/DataTracker/trackevent.h"

void trackNavigation(const QString &buttonArea, const QString &entranceType)
{
    trackEvent(currentFunction(), QStringLiteral("main_click"),
               {{QStringLiteral("button_area"), buttonArea}});
    trackMainView(entranceType);
}

void trackMainView(const QString &entranceType)
{
    trackEvent(currentFunction(), QStringLiteral("main_view"),
               {{QStringLiteral("entrance_type"), entranceType}});
}
