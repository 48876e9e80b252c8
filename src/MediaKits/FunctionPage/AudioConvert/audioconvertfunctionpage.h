// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

/// The page that turns audio files, and the sound of video files, into audio presets.
class AudioConvertFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit AudioConvertFunctionPage(QWidget *parent = nullptr);

protected:
    void setUpFormatDialog(MediaFormatDialog &dialog) override;
};
