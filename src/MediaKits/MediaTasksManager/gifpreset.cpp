// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/gifpreset.h"

#include "catalogue/encparamcatalog.h"

QSharedPointer<EncParam> gifPreset(const QSize &size, double frameRate)
{
    const auto preset = EncParamCatalog::instance().cloneAsCustom(EncParamCatalog::defaultGifId);
    if (!size.isEmpty()) {
        preset->video->width = size.width();
        preset->video->height = size.height();
    }
    preset->video->frameRate = frameRate;
    return preset;
}
