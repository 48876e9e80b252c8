// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/presetrowwidget.h"

/// Base of the rows that convert a video or a part of it: the picture's size is told on both sides,
/// and an editor cuts time and picture.
class VideoRowWidget : public PresetRowWidget
{
    Q_OBJECT

public:
    /// @param kind without what all such rows have in common
    VideoRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

public slots:
    void on_btnCut_clicked();

protected:
    /// The size of the result's picture whatever the preset has; empty where the preset decides.
    virtual QString fixedSize() const { return {}; }

    /// The row's time or picture was cut anew.
    virtual void onCut() {}

    void onSourceProbed(const MediaInfoData &info) override;
    void onResultProbed(const MediaInfoData &info) override;
    void applyPreset(const EncParam *preset) override;
    bool editorAllowed() const override;
    void connectForm(TaskRowForm &form) override;
};
