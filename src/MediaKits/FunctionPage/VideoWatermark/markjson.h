// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QVariantMap>

// A mark in a file: what it has as a map, in plain words. Sizes and places are picture pixels,
// times ms, colours "#rrggbb".

QJsonObject markToJson(const QVariantMap &mark);
/// Empty for what is no mark.
QVariantMap markFromJson(const QJsonObject &json);
