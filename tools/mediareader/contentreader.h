// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

class OpenedFile;

/// What a result or a source is judged by.
/// @param format the file's format record, filled
MediaContent readContent(const OpenedFile &file, const QString &path,
                         const MediaFormatInfo &format);
