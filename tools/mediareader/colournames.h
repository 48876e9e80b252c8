// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// ffmpeg's name of what the MediaInfo library calls `name`: a transfer, primaries or a matrix.
/// Empty for what it has no name for.
QString ffmpegColourName(const QString &name);
