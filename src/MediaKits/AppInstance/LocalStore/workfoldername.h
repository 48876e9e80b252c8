// SPDX-License-Identifier: MIT
#pragma once

#include <QFileInfo>
#include <QString>

// Locks tell what is in use on this machine only. On a folder that several machines share, the name
// of a work folder tells whose it is.

/// A name for a new work folder, with this machine and this process in it.
QString newWorkFolderName();

/// Whether a work folder is another machine's, and something in it has been written within a day.
bool isInUseElsewhere(const QFileInfo &folder);
