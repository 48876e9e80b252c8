// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QTest>
#include <QWidget>
#include <QWindow>

/// A pointer that reaches widgets through their native window, as the display server's does.
class Pointer
{
public:
    explicit Pointer(QWidget *widget) : m_widget(widget) {}

    void press(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        m_global = m_widget->mapToGlobal(pos);
        QTest::mousePress(window(), button, Qt::NoModifier, inWindow());
    }
    /// The distance counts on the screen, wherever the widget goes meanwhile.
    void moveBy(int dx, int dy = 0)
    {
        m_global += QPoint(dx, dy);
        QTest::mouseMove(window(), inWindow());
    }
    void release(Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window(), button, Qt::NoModifier, inWindow());
    }
    QPoint global() const { return m_global; }

private:
    QWindow *window() const { return m_widget->window()->windowHandle(); }
    QPoint inWindow() const { return window()->mapFromGlobal(m_global); }

    QWidget *m_widget;
    QPoint m_global;
};
