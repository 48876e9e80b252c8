// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"

/// Notice of a start without a chosen preset.
class MediaFormatSetTipsDialog : public MediaMessageBox
{
    Q_OBJECT

public:
    explicit MediaFormatSetTipsDialog(QWidget *parent = nullptr);
};
