// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Folder for what belongs to this user's running processes, as locks and sockets; nobody else may
/// enter it. It is the one that the log-in made for that or, when there is none of this user alone,
/// temporaryRoot(). Should the path be too long for the sockets in it, it is a folder in "/tmp".
QString runtimeRoot();

/// Removes this user's sockets that nobody listens to any more, as those of processes that were
/// killed, from runtimeRoot() and from the temporary folder, where earlier versions had them.
/// @param pattern of their names, as "player-*"
void removeDeadSockets(const QString &pattern);
