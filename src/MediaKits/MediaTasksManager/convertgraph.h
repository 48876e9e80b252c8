// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

// Filter text of one conversion; empty when nothing has to be filtered.

/// Picture: size, look, overlays.
QString videoGraphText(const ConvertTaskParam &param);

/// Sound: tempo, volume, dubbing.
/// @param outputMs length in ms of what is taken from the source, before a change of speed; 0 when
///        unknown. Bounds the music that is laid under a source without sound of its own
QString audioGraphText(const ConvertTaskParam &param, int outputMs);
