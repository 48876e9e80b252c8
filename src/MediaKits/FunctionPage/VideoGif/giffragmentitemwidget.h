// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentitemwidget.h"

/// The row of a fragment that becomes a GIF.
class GifFragmentItemWidget : public FragmentItemWidget
{
    Q_OBJECT

public:
    /// @param item holds the fragment already
    GifFragmentItemWidget(QListWidgetItem *item, QWidget *parent);
};
