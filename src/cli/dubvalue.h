// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

#include <optional>

/// One piece of music as a user tells it: '{"file":"song.mp3","start":3.5,"volume":0.8}', with the
/// start in seconds of the film and the volume as a factor from 0 to 2; both may be left out.
/// @return a map of the conversion's "musics"
std::optional<QVariantMap> parseDub(const QString &json);

/// A factor from 0 to 2.
std::optional<float> parseFactor(const QString &text);
