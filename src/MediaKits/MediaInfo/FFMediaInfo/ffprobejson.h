// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

#include <QJsonObject>

/// Fills `data` from ffprobe's "-show_format -show_streams" document; missing fields and those
/// that aren't sensible read as 0 or empty.
/// @param data its format record stays, filled, when the document has one; otherwise it is cleared
void readProbeJson(const QJsonObject &document, MediaInfoData &data);
