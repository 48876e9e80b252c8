// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <atomic>

enum class MoveResult {
    Moved,
    NameTaken, ///< something, be it a link that leads nowhere, has the new name already
    NeedsCopy, ///< the file system renames nothing here
    Failed,
};

/// Renames a file, in one step. Never replaces anything and never copies. Until then the new name
/// is absent, or on a file system that can't rename with care an empty file which claims it.
/// @param error set to the system's text after `Failed`
MoveResult moveWithoutReplacing(const QString &from, const QString &to, QString &error);

/// Moves a file by a copy under a name that it makes for itself; the old name goes when all of the
/// copy is on the disk. May take long.
/// @param isCancelled once true, ends the copy, which then goes, with `Failed`
MoveResult copyWithoutReplacing(const QString &from, const QString &to,
                                const std::atomic<bool> &isCancelled, QString &error);
