// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"

#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistitemwidget.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

AudioConvertFunctionPage::AudioConvertFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::AudioConvert, VideoFormatClass | AudioFormatClass,
                      videoAndAudioFormats, createRowsView<AudioConvertListWidget>,
                      AudioFormatClass},
                     parent)
{
}

void AudioConvertFunctionPage::setUpFormatDialog(MediaFormatDialog &dialog)
{
    AudioConvertListItemWidget::offerAudioOnly(dialog);
}
