// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

/// What is kept of a medium; a null pointer restricts nothing.
struct CutSettings
{
    QSharedPointer<TimeSpan> timeRange;
    QSharedPointer<CropBox> cropRect;
};
