// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"

#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaConvertFunctionPage::MediaConvertFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Convert,
                      VideoFormatClass | SpecialVideoFormatClass | AudioFormatClass, allFormats,
                      createRowsView<MediaConvertListWidget>},
                     parent)
{
}
