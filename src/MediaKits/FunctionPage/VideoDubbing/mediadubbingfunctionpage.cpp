// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbingfunctionpage.h"

#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaDubbingFunctionPage::MediaDubbingFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Dubbing, VideoFormatClass, videoFormats,
                      createRowsView<MediaDubbingListWidget>},
                     parent)
{
}
