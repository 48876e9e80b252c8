// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/listof.h"
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbinglistitemwidget.h"

class MediaDubbingListWidget : public ListOf<MediaDubbingListItemWidget, MediaFunction::Dubbing>
{
    Q_OBJECT

public:
    using ListOf::ListOf;
};
