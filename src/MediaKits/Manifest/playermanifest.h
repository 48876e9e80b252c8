// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QString>

/// Who scales the external player's picture on a dense screen.
enum class PlayerScaling {
    /// The system, as for the program itself in its system mode.
    BySystem,
    /// The player, in every other mode.
    ByPlayer,
};

/// Brings the player's manifest in line with the display scale. Errors are only logged.
/// @param path of the manifest
void configPlayerManifest(PlayerScaling scaling,
                          const QString &path = playerPath() + QStringLiteral(".manifest"));
