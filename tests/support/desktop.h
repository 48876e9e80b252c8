// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QColor>
#include <QImage>
#include <QProcess>
#include <QRect>
#include <QString>

class QWidget;

/// A panel's tray, for as long as it lives. Without one a test's desktop has none.
class SystemTray
{
public:
    /// Returns when the tray takes icons; fails the running test when it doesn't come.
    SystemTray();
    /// Returns when it is gone.
    ~SystemTray();

private:
    QProcess m_panel;
};

/// The screen as a user sees and touches it. Mouse and keyboard go through the display server and
/// the window manager, so that they arrive where a user's would, not where a test wants them.
/// Points are in pixels of the screen.
namespace Desktop {

QImage seen(const QRect &area);
QColor seenAt(const QPoint &point);
/// Whether two colours look alike; films change them a little.
bool isLike(const QColor &seen, const QColor &wanted);

void pointTo(const QPoint &point);
void click(const QPoint &point);
/// Clicks the middle of a widget.
void click(const QWidget &widget);
/// With the left button, over some points on the way.
void drag(const QPoint &from, const QPoint &to);
/// Whether keys go to the window now: the server may yet have to follow what Qt says.
bool hasKeyboard(const QWidget &window);
/// One key or combination, as "space" or "ctrl+a".
void key(const char *name);
void type(const QString &text);

/// An order to the window manager for the window of a widget, as "windowminimize".
void order(const char *command, const QWidget &window);

} // namespace Desktop
