// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifyfunctionpage.h"

#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaBeautifyFunctionPage::MediaBeautifyFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Beautify, VideoFormatClass, videoFormats,
                      createRowsView<MediaBeautifyListWidget>},
                     parent)
{
}
