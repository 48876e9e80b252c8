// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Bytes that the user may still write on the volume of an existing folder; -1 when it can't be
/// told.
qint64 freeDiskSpace(const QString &dir);
