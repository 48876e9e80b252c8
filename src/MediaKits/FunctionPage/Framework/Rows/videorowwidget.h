// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/presetrowwidget.h"

/// Base of the rows that convert a video: the picture's size is told on both sides.
class VideoRowWidget : public PresetRowWidget
{
    Q_OBJECT

public:
    /// @param kind without what all such rows have in common
    VideoRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

protected:
    /// The size of the result's picture whatever the preset has; empty where the preset decides.
    virtual QString fixedSize() const { return {}; }
    /// Tells the size of the result's picture, after something that it depends on was changed.
    void showSize();

    void onSourceProbed(const MediaInfoData &info) override;
    void onResultProbed(const MediaInfoData &info) override;
    void applyPreset(const EncParam *preset) override;
    bool editorAllowed() const override;

private:
    QString keptSize() const;
};
