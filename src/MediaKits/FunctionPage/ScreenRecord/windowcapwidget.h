// SPDX-License-Identifier: MIT
#pragma once

#include "platform/globalkeys.h"

#include <QImage>
#include <QWidget>

/// Lies over all screens while the user picks what is to be recorded, an area or a window, and
/// then frames the area, outside of it. Reckons in its own logical pixels, whose origin is the
/// desktop's, and never in those of Qt's screens, which leave gaps between screens when enlarged.
/// Deletes itself when it is closed.
class WindowCapWidget : public QWidget
{
    Q_OBJECT

public:
    enum OverlayState {
        AreaPicking = 1,
        AreaHeld = 2, ///< picked, paused or ending
        AreaRecorded = 3,
        WindowPicking = 4,
        WindowHeld = 5, ///< picked or being recorded; shows nothing
    };

    explicit WindowCapWidget(QWidget *parent = nullptr);

    /// Covers the screens until the user has dragged an area or clicked a window, whose area is
    /// taken then.
    void pickArea();
    /// The same for a window.
    void pickWindow();
    void setOverlayState(int state);

    /// Physical pixels of the whole desktop.
    QRect selectedRect() const;
    /// The screen with the middle of the selection; never null.
    QScreen *selectedScreen() const;
    /// Of the display server; restores the arrow cursor.
    WId selectedWindow();

signals:
    /// The user has picked.
    void editFinish();
    /// The picking ended without a result; the overlay is hidden then.
    void canceled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool event(QEvent *event) override;

private:
    bool isPicking() const;
    void pick(OverlayState state);
    void cancel();
    void select(const QRect &selection);
    void selectWindowAt(const QPoint &point);
    void showFrame();
    void takePicture();
    WId nativeId() const;
    QRect logical(const QRect &physical) const;
    void paintShade(QPainter &painter) const;
    void paintSize(QPainter &painter) const;
    void paintHints(QPainter &painter) const;

    OverlayState m_state = AreaHeld;
    QRect m_selection;       // logical pixels
    double m_scaleOut = 1.0; // physical pixels to one logical, for what is told
    double m_scaleIn = 1.0;  // the same for what comes from the display server
    QPoint m_pressPoint;
    bool m_isDragging = false;
    WId m_window = 0;
    QImage m_picture; // of the desktop, where no compositor mixes windows
    GlobalKeys m_keys;
};
