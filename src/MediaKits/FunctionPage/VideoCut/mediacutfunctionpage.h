// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that cuts each file into any number of fragments and converts these.
class MediaCutFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaCutFunctionPage(QWidget *parent = nullptr);
};
