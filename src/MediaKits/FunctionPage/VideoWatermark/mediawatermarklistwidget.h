// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/listof.h"
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarklistitemwidget.h"

class MediaWatermarkListWidget
    : public ListOf<MediaWatermarkListItemWidget, MediaFunction::Watermark>
{
    Q_OBJECT

public:
    using ListOf::ListOf;
};
