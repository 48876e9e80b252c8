// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/appinstance.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "platform/utf8locale.h"

#include <QScreen>

namespace {

// Measured from the desktop's corner, not from the screen's.
void centre(QWidget &window)
{
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    window.move((screen.width() - window.width()) / 2, (screen.height() - window.height()) / 2);
}

} // namespace

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    AppInstance instance(argc, argv);
    if (!instance.init())
        return 0;
    MainWindow window;
    window.show();
    centre(window);
    return AppInstance::exec();
}
