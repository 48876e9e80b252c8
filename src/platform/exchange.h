// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Lets two existing files or folders of one file system change their names, in one step: whoever
/// looks finds both as they were before or both as they are after.
/// @param error set to the system's text when it fails, as on a file system that can't do it
bool exchangePaths(const QString &first, const QString &second, QString &error);

/// Returns when all that was written to the file system of `path` is on the disk; false when it
/// isn't known to be.
bool flushFileSystem(const QString &path);
