// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

enum class MoveResult {
    Moved,
    NameTaken, ///< something, be it a link that leads nowhere, has the new name already
    Failed,
};

/// Renames a file within one file system, in one step: the new name is either absent or the whole
/// file. Never replaces anything and never copies.
/// @param error set to the system's text after `Failed`
MoveResult moveWithoutReplacing(const QString &from, const QString &to, QString &error);
