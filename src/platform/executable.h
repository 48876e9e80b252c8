// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Canonical absolute path of the running program, found once. Needs no application object, but
/// ensureUtf8Locale() first where the path may hold other than ASCII characters.
QString executablePath();
