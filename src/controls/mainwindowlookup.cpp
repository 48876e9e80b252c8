// SPDX-License-Identifier: MIT
#include "controls/mainwindowlookup.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

QWidget *mainWindow()
{
    static QPointer<QWidget> found;
    if (found != nullptr)
        return found;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->inherits("MainWindow")) {
            found = window;
            break;
        }
    }
    return found;
}
