// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/definitionhint.h"

#include "platform/screensize.h"
#include "screencap/screencap.h"

#include <QCoreApplication>

QString definitionHint(int definition)
{
    if (definition == Screencap::SourceDefinition)
        return QCoreApplication::translate("ScreencapFuncionPage", "与屏幕相同");
    const QSize size =
        definition == Screencap::HighDefinition ? QSize(1920, 1080) : QSize(1280, 720);
    const QSize screen = screenSizeInPixels();
    const bool fits = size.width() <= screen.width() && size.height() <= screen.height();
    return (fits ? QStringLiteral("%1 × %2")
                 : QCoreApplication::translate("ScreencapFuncionPage", "放大到 %1 × %2"))
        .arg(size.width())
        .arg(size.height());
}
