// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// `path` itself while nothing has that name, else the first free one of "name(2).mp4",
/// "name(3).mp4" ... in the same folder. A link that leads nowhere has a name too.
QString uniqueOutputPath(const QString &path);

/// The file name of `path` isn't longer than the file system takes.
bool fileNameFits(const QString &path);

/// The folder that a user means by a text: a leading "~" is the home folder, which is also where a
/// relative path begins. An empty text stays empty.
QString folderFrom(const QString &typed);

/// The base name that a user typed for an output, as one name in its folder.
/// @param before stands when nothing was typed
QString outputNameFrom(const QString &typed, const QString &before);
