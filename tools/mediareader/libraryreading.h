// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/factsstream.h"

/// Reads a file through the MediaInfo library, which takes some milliseconds, or for ever.
/// @return null for a file without media
QSharedPointer<MediaInfoData> readWithLibrary(const QString &path, ReadDepth depth);
