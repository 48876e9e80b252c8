// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Names in a folder that no text can hold, as those from an old system that aren't in UTF-8: such
/// files can't be opened by a path. What can't be read of a name is a replacement character here.
QStringList undecodableNames(const QString &folder);

/// Whether a path has lost something of a name, and so leads to no file.
inline bool isUndecodable(const QString &path)
{
    return path.contains(QChar::ReplacementCharacter);
}
