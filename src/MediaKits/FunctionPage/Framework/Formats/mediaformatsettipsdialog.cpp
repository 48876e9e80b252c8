// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"

MediaFormatSetTipsDialog::MediaFormatSetTipsDialog(QWidget *parent) : MediaMessageBox(parent)
{
    setText(tr("您未进行视频设置，请先进行视频设置"));
}
