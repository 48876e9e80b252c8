// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/presetrowwidget.h"

/// One sound to convert: its bitrate is told on both sides.
class AudioConvertListItemWidget : public PresetRowWidget
{
    Q_OBJECT

public:
    AudioConvertListItemWidget(QListWidgetItem *item, QWidget *parent);

    /// Limits a format dialog to what this page makes.
    static void offerAudioOnly(MediaFormatDialog &dialog);

public slots:
    void on_btnCut_clicked();

protected:
    void onSourceProbed(const MediaInfoData &info) override;
    void onResultProbed(const MediaInfoData &info) override;
    void applyPreset(const EncParam *preset) override;
    void setUpFormatDialog(MediaFormatDialog &dialog) override;
};
