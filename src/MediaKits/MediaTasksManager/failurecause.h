// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// One line that says in the user's words why ffmpeg failed, as far as its report has a reason that
/// is known; ffmpeg's own words are for those who ask for details.
/// @param report the last lines of its report
QString failureCause(const QStringList &report);

/// The line of ffmpeg's report that tells most; empty for an empty report.
QString tellingLine(const QStringList &report);

/// A failure's cause without the paths and names of files that it tells, for statistics.
/// @param files whose paths are known to be told
QString causeWithoutNames(QString cause, const QStringList &files);
