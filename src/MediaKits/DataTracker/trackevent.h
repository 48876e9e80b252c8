// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>

class OskDataTracker;
class VolcDataTracker;

/// Reports a use of a page, to the services that main.ini names. Never blocks and never fails.
/// @param page 0 for the home page, 1 to 11 for the function pages in their order
void trackEvent(int page, const QString &event, const QVariantMap &params = {});

/// The same with trackers of the caller's own.
void trackEvent(int page, const QString &event, QVariantMap params, OskDataTracker &osk,
                VolcDataTracker &volc);
