// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// One line that says why ffmpeg failed: in the user's words where the reason is a common one,
/// with ffmpeg's own line behind it.
/// @param report the last lines of its report
QString failureCause(const QStringList &report);
