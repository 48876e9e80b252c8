// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether a program folder is this user's to be exchanged as a whole: a real folder of the user's
/// own, in one that the user may write, and not of the system's package manager, whose files the
/// system's administrator could write as well.
bool isOwnFolder(const QString &folder);
