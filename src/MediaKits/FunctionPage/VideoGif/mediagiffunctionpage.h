// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/listpage.h"

/// The page that makes GIFs of parts of videos.
class MediaGifFunctionPage : public ListPage
{
    Q_OBJECT

public:
    explicit MediaGifFunctionPage(QWidget *parent = nullptr);

    void on_chkHighQuality_toggled(bool checked);

protected:
    void setUpChoices(QWidget *choices) override;
};
