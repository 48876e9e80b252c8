// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Path of the file that holds the regular font of exactly the family `family`, in any of the
/// family's languages and in any case of letters; empty when no such family is installed.
/// Looked up anew by each call.
QString fontFileOfFamily(const QString &family);

/// The installed family that stands in for `family`, which is that one itself when it is
/// installed. One with Chinese characters is preferred.
QString nearestFontFamily(const QString &family);
