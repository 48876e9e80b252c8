// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Folder for what belongs to this user's running processes, as locks and sockets; the path only.
/// It is the one that the log-in made for that, or temporaryRoot() when there is none of this user.
QString runtimeRoot();
