// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Deletes a directory with all it holds, read-only and hidden entries included, and then its
/// parents as long as they are empty; the walk up ends with a marker directory, since the folder
/// that holds one is the user's. A symbolic link is deleted itself, never followed. Nothing is
/// deleted by way of a marker directory that isn't this user's alone.
/// @return true when the directory is gone, also when the path is empty or names nothing; false
/// at the first entry that can't be deleted, or when the path names a file
bool removeDirRecursively(const QString &path);
