// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that lays music over videos.
class MediaDubbingFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaDubbingFunctionPage(QWidget *parent = nullptr);
};
