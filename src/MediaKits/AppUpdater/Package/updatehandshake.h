// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// What the program and the one that installs its updates have to agree on.

/// Name of the lock that is held while an update is looked for, fetched or installed.
QString updateLockName(const QString &appCode);

/// Folder beside an installation in which the new one is unpacked and the old one is kept until the
/// new one has started.
QString updateWorkFolder(const QString &installFolder);

/// The one of the two that isn't in its place.
QString updateOtherFolder(const QString &installFolder);

// An update may be killed between the exchange and the first start of the new program. Until that
// has started once, its folder holds a note; the old one waits beside.

/// Path of the note.
QString updateTrialNote(const QString &installFolder);
/// Whether an installation has yet to start once, and can be taken back.
bool isUpdateOnTrial(const QString &installFolder);
/// For each start of such an installation: whether an earlier one came to nothing.
bool beginUpdateTrial(const QString &installFolder);

/// Environment of a program that was just installed: path of a file that it makes once its window
/// is there.
inline constexpr char updateStartedVariable[] = "MORVANE_UPDATE_STARTED";
/// Environment of a program whose update failed: the reason, for the user.
inline constexpr char updateFailedVariable[] = "MORVANE_UPDATE_FAILED";
/// Environment of the same, set when the package itself is to blame: it would fail again.
inline constexpr char updateUnfitVariable[] = "MORVANE_UPDATE_UNFIT";
