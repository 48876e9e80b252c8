// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

/// Whether anything is laid over the video's own sound.
bool hasMusic(const ConvertTaskParam &param);

/// The music's files, each once.
QStringList musicFiles(const ConvertTaskParam &param);

/// Tells a convert step how its dubbings are mixed so that each sound is heard at the factor and
/// the time that its record says. Times of the record are those of the source; music keeps its own
/// speed. Music that goes on behind the end fades out there.
void mapDubbing(ConvertTaskParam &step);

/// What a conversion would sound like for some seconds, as a conversion of its own into a WAV file.
/// @param fromMs what is to be heard of the source begins there
/// @param lengthMs of what is to be heard
/// @return `timeRange` tells which part it is: it begins up to a second earlier, and near the end
///     `lengthMs` before that; folder and name of the file are left to the caller
ConvertTaskParam dubbingExcerpt(const ConvertTaskParam &param, int fromMs, int lengthMs);
