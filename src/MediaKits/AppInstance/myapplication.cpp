// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/myapplication.h"

bool MyApplication::notify(QObject *receiver, QEvent *event)
{
    return QApplication::notify(receiver, event);
}
