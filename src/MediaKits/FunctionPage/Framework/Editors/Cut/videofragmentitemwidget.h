// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentitemwidget.h"

/// The row of a fragment of a video.
class VideoFragmentItemWidget : public FragmentItemWidget
{
    Q_OBJECT

public:
    /// @param item holds the fragment already
    VideoFragmentItemWidget(QListWidgetItem *item, QWidget *parent);
};
