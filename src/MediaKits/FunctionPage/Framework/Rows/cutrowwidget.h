// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

/// Base of the rows that convert a part of a video, which an editor cuts in time and picture.
class CutRowWidget : public VideoRowWidget
{
    Q_OBJECT

public:
    /// @param kind without what all such rows have in common
    CutRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

public slots:
    void on_btnCut_clicked();

protected:
    /// The row's time or picture was cut anew.
    virtual void onCut() {}
};
