// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

/// The widget of that name somewhere in a window; fails loudly by a null pointer when it's missing.
template<class Widget = QWidget>
Widget *child(const QWidget &window, const char *name)
{
    return window.findChild<Widget *>(QLatin1String(name));
}

/// Clicks the middle of a named widget.
inline void press(const QWidget &window, const char *name)
{
    QTest::mouseClick(child(window, name), Qt::LeftButton);
}

/// The visible top-level window of a class, null when there is none.
inline QWidget *visibleWindow(const char *className)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits(className) && widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// Waits for a modal dialog of a class that something is about to run, and gives it to `act`, which
/// has to end it. Call before what opens the dialog.
template<class Act>
void whenModal(const char *className, Act act)
{
    constexpr int lookIntervalMs = 20;
    constexpr int mostLooks = 100;
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=, looks = 0]() mutable {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->inherits(className))
            return;
        // One that goes sooner than it has the focus, as no user's does, leaves nobody with it.
        if (!dialog->isActiveWindow() && ++looks < mostLooks)
            return;
        timer->deleteLater();
        timer->stop();
        act(*dialog);
    });
    timer->start(lookIntervalMs);
}

/// Writes a picture of a window, with what other programs draw into it, into the folder that
/// MORVANE_SHOTS names; nothing without it.
inline void shoot(QWidget &window, const char *name)
{
    const QString folder = qEnvironmentVariable("MORVANE_SHOTS");
    if (!folder.isEmpty())
        window.grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(".png"));
}
