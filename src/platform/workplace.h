// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Standard C++ alone: the launchers of the tools look at the folders that they write to as well.

/// Name of a marker directory, which holds the work folders of running jobs. Where another user has
/// taken the name, this user's numeric id stands behind it.
constexpr char markerName[] = "~~MRVN_Temp~~";

bool isMarkerName(const std::string &name);
bool leadsThroughMarker(const std::string &path);

/// Takes the right to write in an open folder away from all others. A file system that keeps no
/// owners or modes, as FAT and most shares, is told by an empty file that is made for a moment; any
/// folder will do there.
/// @return whether the folder is this user's, and nobody else may write in it
bool makePrivate(int folder);

/// Opens a folder that is there. If its path leads through a marker directory, the last of them has
/// to be this user's alone and no link; a link in it is followed to a place of which the same
/// holds.
/// @return a descriptor for openat() and "/proc/self/fd"; -1 when it can't be opened so
int openWorkPlace(const std::string &path);
