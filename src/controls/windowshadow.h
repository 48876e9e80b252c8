// SPDX-License-Identifier: MIT
#pragma once

#include "controls/shadowpicture.h"

#include <QDialog>
#include <QPointer>

class QWheelEvent;

/// The drop shadow of a frameless window: a transparent window of its own that lies around its
/// target and follows it. It is the target's child, so that it goes with it, and makes the target
/// frameless. Window managers keep it with its target as one of the target's transient windows,
/// and therefore directly above it: the target's area is cut out, and the pointer passes through.
/// It stays hidden while no compositor runs.
class WindowShadow : public QDialog
{
    Q_OBJECT

public:
    explicit WindowShadow(QWidget *target);

    /// `radius` is the shadow's width in pixels around the target, moved by `offset`.
    void setup(int radius, const QPoint &offset, const QColor &colour);
    void setRadius(int radius);
    void setColour(const QColor &colour);
    /// A flat shadow is the target's outline filled with the colour.
    void setFlat(bool flat);

    int radius() const { return m_look.radius; }
    QPoint offset() const { return m_look.offset; }
    QColor colour() const { return m_look.colour; }
    bool isFlat() const { return m_look.flat; }

    void setVisible(bool visible) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The receiver at the end of the queue deletes the event.
    void afterEvent(QEvent *event);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void onAfterEvent(QEvent *event);
    void onTargetResize();
    void onTargetWindowState();
    void onTargetShow();
    bool targetIsUp() const;
    bool isLarge() const;
    void place();
    void passWheelOn(const QWheelEvent *event);

    QPointer<QWidget> m_target;
    ShadowLook m_look;
    ShadowPicture m_picture;
    bool m_isSettled = false; // the target has been shown where it is to stand
};
