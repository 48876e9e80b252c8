// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/mediainfobase.h"

/// The one way to get a reader: the library's for files below 3 GiB, ffprobe for larger files on
/// a 64-bit system and always for "QSV".
/// @param format upper-case suffix of the file
/// @param parent owns the reader
MediaInfoBase *createMediaInfo(const QString &format, const QString &path, QObject *parent);
