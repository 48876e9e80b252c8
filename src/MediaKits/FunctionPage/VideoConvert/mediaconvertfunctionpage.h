// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that converts video and audio files to a preset of the catalogue.
class MediaConvertFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaConvertFunctionPage(QWidget *parent = nullptr);
};
