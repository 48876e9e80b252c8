// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"

#include <QPointer>
#include <QTimer>

class QWidget;

/// Makes Qt's events of what a view is told of mouse and keyboard, and sends them to a widget.
class InputEvents : public QObject
{
    Q_OBJECT

public:
    /// A new target has the focus that the old one had; with null all goes nowhere.
    void setTarget(QWidget *target);

    void mouse(quint32 code, const QPoint &point, quint32 flags);
    void wheel(const QPoint &point, int delta, quint32 flags);
    void keyDown(const KeyCode &key, quint32 flags);
    void keyUp(const KeyCode &key, quint32 flags);
    void keyPress(uint character);
    void focus(bool isIn);

private:
    void flush();
    void send(QEvent &event);
    QPoint global(const QPoint &point) const;

    QPointer<QWidget> m_target;
    /// The engine takes a key and its text as one: the key waits for the text that follows it.
    struct
    {
        bool isWaiting = false;
        KeyCode key;
        quint32 flags = 0;
        QString text;
    } m_down;
    QTimer m_flush;
    bool m_hasFocus = false;
};
