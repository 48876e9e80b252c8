// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/mediashotfunctionpage.h"

#include "MediaKits/FunctionPage/VideoShot/mediashotlistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaShotFunctionPage::MediaShotFunctionPage(QWidget *parent)
    : ListPage({MediaFunction::Shot, VideoFormatClass, videoFormats,
                createRowsView<MediaShotListWidget>},
               parent)
{
}

// Each video has choices of its own.
void MediaShotFunctionPage::setUpChoices(QWidget *choices)
{
    choices->hide();
}
