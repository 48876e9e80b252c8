// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/gifcutfragment.h"

#include "MediaKits/MediaTasksManager/gifpreset.h"

void applyFragment(const GifCutFragment &fragment, ConvertTaskParam &param)
{
    param.outputName = fragment.name;
    param.timeRange = fragment.timeRange;
    param.format = QStringLiteral("GIF");
    param.encParam = gifPreset(fragment.size ? *fragment.size : QSize(), fragment.frameRate);
}
