// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QFileInfo;

/// More bytes than any store of ours has; the largest have some hundred kB.
inline constexpr qint64 largestStoreBytes = 64 * 1024 * 1024;

/// Renames what is at `path` to its name plus ".broken", ".broken2" and so on.
/// @return the new name; empty when it can't be
QString setAside(const QString &path);

/// The same with a copy, so that `path` stays.
QString copyAside(const QString &path);

/// Whether a store may open what is there: waiting for a pipe takes for ever, and a device has no
/// end.
bool isReadableStore(const QFileInfo &info);

/// Sees to it that settings can be read from `path`: what is there and is no file of a sensible
/// size, or holds what no settings of ours do, is set aside.
/// @return `path`; when that is held by something which can't be moved, another beside it
QString clearedIniPath(const QString &path);
