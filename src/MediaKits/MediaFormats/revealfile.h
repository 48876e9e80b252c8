// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Shows the file `path` in the desktop's file manager, or its folder when it is gone. Does
/// nothing for an empty path, and reports no errors.
void revealInFileManager(const QString &path);
