// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// A marker directory stands in an output folder and holds the work folders of running jobs.
// Several processes may share one, and each may be killed at any time: what is in use is told by
// locks that die with their process. All of this is best effort and reports no errors.

/// Name of the marker directories, behind which this user's numeric id may stand.
QString tempMarkerName();

/// Whether a folder's name is that of a marker directory.
bool isTempMarkerName(const QString &name);

/// The path of the marker directory in `dir`; nothing is created. Where a link, a file or another
/// user's folder has taken the usual name, this user's numeric id stands behind it.
QString tempMarkerPath(const QString &dir);

/// Whether a link, a file or another user's folder stands in a marker directory's place.
bool isMarkerTaken(const QString &marker);

/// Makes the marker directory in `dir`, with its parents, and gives back its path. Work folders
/// that dead processes have left in it are removed, those of other machines when they are a day
/// old. At process exit this process's own work folders are removed, then the marker unless another
/// process still uses it.
QString createTempMarkerDir(const QString &dir);

/// A path for a new work folder in the marker directory of `dir`, see createTempMarkerDir().
QString newWorkFolderPath(const QString &dir);

enum class WorkFolderState {
    Made,
    Refused, ///< a link, a file, or another user's folder stands in the marker directory's place
    Failed,
};

/// Makes a work folder of this user alone and claims it.
WorkFolderState makeWorkFolder(const QString &path);

/// Declares the existing folder `path` in use by this process until releaseWorkFolder() or exit.
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
