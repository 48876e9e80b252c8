// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

/// One status line of the player: where it is.
struct PlayerStatus
{
    float position = 0; ///< whole seconds
    int positionMs = 0; ///< the same, to the ms where the player tells them
    float total = 0;    ///< whole seconds, 0 when the line tells none
    float percent = 0;
};

/// The status lines in a piece of the player's standard error, in their order; all else in it is
/// left out.
QVector<PlayerStatus> playerStatuses(const QByteArray &output);
