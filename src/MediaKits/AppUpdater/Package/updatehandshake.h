// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// What the program and the one that installs its updates have to agree on.

/// Name of the lock that is held while an update is looked for, fetched or installed.
QString updateLockName(const QString &appCode);

/// Folder beside an installation in which the new one is unpacked and the old one is kept until the
/// new one has started.
QString updateWorkFolder(const QString &installFolder);

/// Environment of a program that was just installed: path of a file that it makes once its window
/// is there.
inline constexpr char updateStartedVariable[] = "MORVANE_UPDATE_STARTED";
/// Environment of a program whose update failed: the reason, for the user.
inline constexpr char updateFailedVariable[] = "MORVANE_UPDATE_FAILED";
/// Environment of the same, set when the package itself is to blame: it would fail again.
inline constexpr char updateUnfitVariable[] = "MORVANE_UPDATE_UNFIT";
