// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarkfunctionpage.h"

#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarklistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaWatermarkFunctionPage::MediaWatermarkFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Watermark, VideoFormatClass, videoFormats,
                      createRowsView<MediaWatermarkListWidget>},
                     parent)
{
}
