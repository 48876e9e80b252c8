// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>

#include <memory>

class QMouseEvent;

namespace Ui {
class ChopMaskWidget;
}

/// A dim area with a clear hole, the frame of what is kept: it is moved by its middle, resized by
/// its edges, and drawn anew on the dim area.
class ChopMaskWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ChopMaskWidget(QWidget *parent = nullptr);
    ~ChopMaskWidget() override;

    /// Places the frame, in pixels of this widget.
    void setChopRect(const QRect &rect);
    QRegion drawnRegion() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void chopRectChanged(QRect rect);
    /// An event that the dim area or the frame has just had; valid only until the slot returns.
    void afterEvent(QEvent *event);

private:
    bool onFrameEvent(QEvent &event);
    bool onAreaEvent(QEvent &event);
    void onAreaPress(const QMouseEvent &mouse);
    void onAreaDrag(const QMouseEvent &mouse);
    void onFramePress(const QMouseEvent &mouse);
    void onFrameDrag(const QMouseEvent &mouse);
    void testHit(const QMouseEvent &mouse, bool pressed);
    void paintArea();
    void placeFrame(const QRect &rect);
    QPoint inArea(const QMouseEvent &mouse) const;

    const std::unique_ptr<Ui::ChopMaskWidget> m_ui;
    QPoint m_pressPoint;
    QPoint m_dragOffset;
    QRect m_pressed; ///< the frame at the press
    int m_direction = 0;
};
