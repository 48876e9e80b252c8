// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

/// What happens to a filter of the player's chain.
enum class FilterOperation {
    Set = 0,
    Add = 1,
    Toggle = 2,
    Delete = 3,
    Clear = 4,
};

/// The player's words for a filter command, as `add "lavfi=[hflip]"`.
/// @param name a name of ours, as "mirror", or one of the player's own filters
/// @param value what the filter is told: a text, a QSize for "letterbox", or for a deletion the
///        filter's index
QString filterCommand(FilterOperation operation, const QString &name, const QVariant &value);

/// The player's words for a filter graph that takes the place of the one before of that label in
/// one step; an empty graph takes that one away.
QString labelledGraphCommand(const QString &label, const QString &graph);
