// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/updatecheck.h"

#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"

#include <QCoreApplication>

void checkForUpdate(QWidget *parent)
{
    MediaMessageBox::showMessage(
        QCoreApplication::translate("UpdateCheck", "检查更新"),
        QCoreApplication::translate("UpdateCheck", "尚未设置更新服务，暂时无法检查新版本。"),
        parent);
}
