// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistitemwidget.h"
#include "MediaKits/FunctionPage/Framework/Rows/listof.h"

class AudioConvertListWidget
    : public ListOf<AudioConvertListItemWidget, MediaFunction::AudioConvert>
{
    Q_OBJECT

public:
    using ListOf::ListOf;
};
