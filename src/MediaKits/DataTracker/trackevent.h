// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

#include <QString>
#include <QVariantMap>

class OskDataTracker;
class VolcDataTracker;

/// Reports a use of a page, to the services that main.ini names. Never blocks and never fails.
void trackEvent(MediaFunction function, const QString &event, const QVariantMap &params = {});

/// The same with trackers of the caller's own.
void trackEvent(MediaFunction function, const QString &event, QVariantMap params,
                OskDataTracker &osk, VolcDataTracker &volc);
