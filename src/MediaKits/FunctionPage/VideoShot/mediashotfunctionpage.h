// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/listpage.h"

/// The page that takes pictures of videos.
class MediaShotFunctionPage : public ListPage
{
    Q_OBJECT

public:
    explicit MediaShotFunctionPage(QWidget *parent = nullptr);

protected:
    void setUpChoices(QWidget *choices) override;
};
