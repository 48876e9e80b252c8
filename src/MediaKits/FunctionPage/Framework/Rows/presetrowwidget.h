// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/convertrowwidget.h"

class MediaFormatDialog;

/// Base of the rows that convert to a preset of the catalogue: one of the row's own or the page's,
/// at a speed of the user's choice or not.
class PresetRowWidget : public ConvertRowWidget
{
    Q_OBJECT

public:
    /// @param kind without what all such rows have in common
    PresetRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

    void setEncParamInfoID(quint32 id) override;
    quint32 encParamInfoID() const override { return m_encParamInfoID; }
    /// @param type 1 as the source, 2 fast, 3 fastest
    void setSpeedType(int type);

protected:
    /// Takes what the preset makes of the detail of the source.
    /// @param preset null when none is chosen
    virtual void applyPreset(const EncParam *preset) = 0;
    /// Limits the offer of the row's format dialog.
    virtual void setUpFormatDialog(MediaFormatDialog &) {}

    void connectForm(TaskRowForm &form) override;

private:
    void on_btnFormatSet_clicked(QWidget *button);
    void on_btnSpeedSwitch_clicked(QWidget *button);

    quint32 m_encParamInfoID = 0;
};
