// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <memory>

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
        window.grab().save(folder + u'/' + QLatin1String(name) + ".png"_s);
}

/// What the screen shows where a widget is, with what other programs draw there.
inline QImage screenPart(const QWidget &widget)
{
    const QRect area(widget.mapToGlobal(QPoint()), widget.size());
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage();
}

/// Runs `act`, which has to open a modal dialog, and answers that by a button.
/// @return what the dialog says, or its class where it has no such text; empty when none came
template<class Act>
QString askedBy(Act act, const char *button, const char *className = "MediaMessageBox")
{
    const auto text = std::make_shared<QString>();
    whenModal(className, [=](QWidget &dialog) {
        const auto *label = child<QLabel>(dialog, "lblText");
        *text = label ? label->text() : QLatin1String(className);
        shoot(dialog, className);
        press(dialog, button);
    });
    act();
    return *text;
}

/// A drag by the left button from a widget's point over others, all in its parent's pixels, as the
/// widget may move meanwhile.
inline void dragWidget(QWidget *widget, const QPoint &from, const QVector<QPoint> &way)
{
    const auto send = [widget](QEvent::Type type, const QPoint &parentPoint, Qt::MouseButton button,
                               Qt::MouseButtons buttons) {
        const QPoint point = widget->mapFromParent(parentPoint);
        QMouseEvent event(type, point, widget->mapToGlobal(point), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (const QPoint &point : way)
        send(QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, way.last(), Qt::LeftButton, Qt::NoButton);
}

/// What the visible toast says; empty when there is none.
inline QString toastText()
{
    const QWidget *toast = visibleWindow("Toast");
    return toast ? toast->findChild<QLabel *>()->text() : QString();
}
