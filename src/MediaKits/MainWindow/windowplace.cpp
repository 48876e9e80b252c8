// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/windowplace.h"

#include "controls/withinscreen.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

int areaOf(const QRect &rect)
{
    return rect.width() * rect.height();
}

// Screens may have gone since the place was noted.
const QScreen *screenOf(const QRect &place)
{
    const QScreen *best = QGuiApplication::primaryScreen();
    int most = 0;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const int seen = areaOf(screen->geometry() & place);
        if (seen > most) {
            most = seen;
            best = screen;
        }
    }
    return best;
}

QRect centred(const QSize &size, const QRect &area)
{
    QRect rect(QPoint(), size.boundedTo(area.size()));
    rect.moveCenter(area.center());
    return rect;
}

} // namespace

void WindowPlace::restore(QWidget &window)
{
    const AppIni &ini = AppIni::instance();
    const QRect noted = ini.value(AppIni::Key::WindowPlace).toRect();
    const QRect area = screenOf(noted)->availableGeometry();
    window.setMinimumSize(window.minimumSize().boundedTo(area.size()));
    const QSize size = noted.size().expandedTo(window.minimumSize());
    window.setGeometry(noted.isEmpty() ? centred(window.size(), area)
                                       : withinArea({noted.topLeft(), size}, area));
    if (ini.value(AppIni::Key::WindowIsMaximized).toBool())
        window.setWindowState(Qt::WindowMaximized);
}

void WindowPlace::store(const QWidget &window)
{
    const bool isMaximized = window.isMaximized();
    AppIni &ini = AppIni::instance();
    ini.setValue(AppIni::Key::WindowPlace,
                 isMaximized ? window.normalGeometry() : window.geometry());
    ini.setValue(AppIni::Key::WindowIsMaximized, isMaximized);
}
