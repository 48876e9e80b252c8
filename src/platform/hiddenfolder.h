// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Hides the existing folder `path` from file browsers where the system has an attribute for
/// that. On Linux it does nothing: only a leading dot in the name, which the caller has fixed,
/// or a line in the parent's ".hidden" file hides a folder, and that file is the user's own.
void hideFolder(const QString &path);
