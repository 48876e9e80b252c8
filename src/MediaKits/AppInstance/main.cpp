// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/appinstance.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "MediaKits/MainWindow/updatecheck.h"
#include "platform/utf8locale.h"

#include <QTimer>

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    AppInstance instance(argc, argv);
    if (!instance.init())
        return 0;
    MainWindow window;
    QObject::connect(&instance.application(), &QtSingleApplication::messageReceived, &window,
                     &MainWindow::sltMessageReceived);
    window.open();
    // Once the event loop runs.
    QTimer::singleShot(0, &window, [&window] { noteStart(&window); });
    return AppInstance::exec([&window] { window.finishWork(); });
}
