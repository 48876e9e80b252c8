// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/listof.h"
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifylistitemwidget.h"

class MediaBeautifyListWidget : public ListOf<MediaBeautifyListItemWidget, MediaFunction::Beautify>
{
    Q_OBJECT

public:
    using ListOf::ListOf;
};
