// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>
#include <QtTest>

/// The widget of that name in a window.
template<class Widget = QWidget>
Widget *child(const QWidget &window, const char *name)
{
    return window.findChild<Widget *>(QLatin1String(name));
}

/// Clicks the button of that name.
inline void press(const QWidget &window, const char *name)
{
    QTest::mouseClick(child(window, name), Qt::LeftButton);
}
