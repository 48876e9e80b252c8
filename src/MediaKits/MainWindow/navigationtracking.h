// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The usage events of a way into a function page.
/// @param buttonArea where the user clicked
/// @param entranceType kind of the entrance
void trackNavigation(const QString &buttonArea, const QString &entranceType);

/// The second of them alone: the home page tells its own first view by it.
void trackMainView(const QString &entranceType);
