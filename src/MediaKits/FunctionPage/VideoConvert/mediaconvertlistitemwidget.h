// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/presetrowwidget.h"

/// One file to convert: its picture size is told on both sides.
class MediaConvertListItemWidget : public PresetRowWidget
{
    Q_OBJECT

public:
    MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent);

public slots:
    void on_btnCut_clicked();

protected:
    void takeSource(const MediaInfoData &info) override;
    void takeResult(const MediaInfoData &info) override;
    void takePreset(const EncParam *preset) override;
    bool editorAllowed() const override;
    void connectForm(TaskRowForm &form) override;
};
