// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"

#include "MediaKits/FunctionPage/VideoCut/mediacuttreewidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

MediaCutFunctionPage::MediaCutFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Cut,
                      VideoFormatClass | SpecialVideoFormatClass | AudioFormatClass, allFormats,
                      createRowsView<MediaCutTreeWidget>},
                     parent)
{
}
