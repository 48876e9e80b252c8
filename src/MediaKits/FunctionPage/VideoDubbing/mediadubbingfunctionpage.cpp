// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbingfunctionpage.h"

#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaDubbingFunctionPage::MediaDubbingFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Dubbing, VideoFormatClass, videoFormats}, parent)
{
}

TaskRowsView *MediaDubbingFunctionPage::createRows(QWidget *parent)
{
    return new MediaDubbingListWidget(parent);
}
