// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that turns videos, changes their colours, speed and loudness.
class MediaBeautifyFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaBeautifyFunctionPage(QWidget *parent = nullptr);
};
