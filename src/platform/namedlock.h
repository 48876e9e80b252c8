// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directorylock.h"

#include <QString>

/// Takes the lock of that name, which the processes of this user share, without waiting. The
/// result holds nothing when the lock is taken, or when the name isn't fit for a folder's.
DirectoryLock tryNamedLock(const QString &name);
