// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QMouseEvent;
class QWindow;

/// The edges of `rect` that lie within `border` pixels of `pos`; two at a corner, none inside the
/// border or outside the rectangle.
Qt::Edges edgesAt(const QRect &rect, const QPoint &pos, int border);

/// The cursor over the edges of what can be resized there.
Qt::CursorShape resizeCursor(Qt::Edges edges);

/// Makes a frameless window resizable at its edges, with the cursor's shape telling so. The window
/// is the owner. A maximized window and one of fixed size stay as they are.
class EdgeResizer : public QObject
{
    Q_OBJECT

public:
    /// `border` in pixels, inside the window.
    EdgeResizer(QWidget *window, int border);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchHandle();
    Qt::Edges activeEdges(const QPoint &pos) const;
    void showCursor(const QPoint &pos);

    QWidget *m_window;
    QPointer<QWindow> m_handle;
    int m_border;
    bool m_hasCursor = false;
};
