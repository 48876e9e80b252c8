// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

#include <optional>

// Marks as a user tells them; each becomes one of a conversion's "videoFilters". Rectangles are
// pixels of the shown source picture. All may have "from" and "to", in seconds; without an end a
// mark lasts until the film's.

/// '{"image":"logo.png","rect":[X,Y,W,H],"opacity":0.8,"from":0,"to":5}' or
/// '{"text":"…","rect":[X,Y,W,H],"font":"…","size":36,"color":"#ffffff"}'. A text fills its
/// rectangle, and has its own size where that is [X,Y]; it takes an application with a GUI to know
/// that.
std::optional<QVariantMap> parseWatermark(const QString &json);

/// '{"rect":[X,Y,W,H]}': what lies there is removed.
std::optional<QVariantMap> parseDelogo(const QString &json);
