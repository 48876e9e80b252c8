// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that puts texts and pictures onto videos, and takes logos off them.
class MediaWatermarkFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaWatermarkFunctionPage(QWidget *parent = nullptr);
};
