// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// A marker directory stands in an output folder and holds the work folders of running jobs.
// Several processes may share one, and each may be killed at any time: what is in use is told by
// locks that die with their process. All of this is best effort and reports no errors.

/// Name of every marker directory.
QString tempMarkerName();

/// The path of the marker directory in `dir`; nothing is created.
QString tempMarkerPath(const QString &dir);

/// Makes the marker directory in `dir`, with its parents, and gives back its path. Work folders
/// that dead processes have left in it are removed. At process exit this process's own work
/// folders are removed, then the marker unless another process still uses it.
QString createTempMarkerDir(const QString &dir);

/// Declares the existing folder `path` in use by this process until releaseWorkFolder() or exit.
/// Claim a work folder as soon as it is made: only its first 10 seconds are protected without.
/// False when another process has it or it can't be locked, which is no reason not to use it.
bool claimWorkFolder(const QString &path);

/// Where a claimed work folder is now: somebody may have moved the output folder around it. `path`
/// for one that isn't claimed, or is gone.
QString presentWorkFolder(const QString &path);

/// Gives up a claim; the folder itself is left as it is. Unclaimed paths are ignored.
void releaseWorkFolder(const QString &path);

/// Keeps a work folder with all that is in it from every clean-up, since it holds what a user can't
/// get in any other way. Its name changes for that, unless it is a recording's.
/// @return its path from now on
QString keepWorkFolder(const QString &path);

/// Ending of the names of work folders that hold a recording of the screen: what has been recorded
/// can't be made again, so that they are never swept.
QString recordingFolderEnding();

/// The folders of recordings in the marker directories that are known to have been used. Some may
/// be in use, which claimWorkFolder() tells.
QStringList recordingFolders();

/// Cleans the marker directories of earlier runs that ended without cleaning up themselves. For
/// program start.
void sweepStaleMarkers();
