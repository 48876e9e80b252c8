// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/listof.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistitemwidget.h"

class MediaConvertListWidget : public ListOf<MediaConvertListItemWidget, MediaFunction::Convert>
{
    Q_OBJECT

public:
    using ListOf::ListOf;
};
