// SPDX-License-Identifier: MIT
#pragma once

#include <QLine>
#include <QRect>
#include <QVector>
#include <QWidget>

/// A box that is dragged and resized inside its parent. A box that is moved near an edge or the
/// middle of it is caught there, unless Alt is held.
class DrmWidget : public QWidget
{
    Q_OBJECT

public:
    /// The middle's direction; the edges' are those of EdgeDrag.
    static constexpr int moveDirection = 16;

    explicit DrmWidget(QWidget *parent = nullptr);

    /// Height / width to keep while resizing. Only shapes between 0.2 and 5 are kept: thinner
    /// ones would be too hard to grasp.
    void setAspect(double aspect) { m_aspect = aspect; }
    double aspect() const { return m_aspect; }
    /// Bits of the directions that a press may find; the others do nothing.
    void setAllowedDirections(int directions) { m_allowedDirections = directions; }
    int allowedDirections() const { return m_allowedDirections; }

signals:
    void rectResized(QRect rect);
    void rectMoved(QRect rect);
    void mousePressed();
    /// While it is dragged: lines of the parent that it is caught by, none when it is free.
    void snapped(QVector<QLine> guides);
    /// Also when it is hidden while it is dragged.
    void mouseReleased();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void testHit(const QMouseEvent &event, bool pressed);
    QPoint inParent(const QMouseEvent &event) const;
    QSize bound() const;
    void moveTo(const QPoint &place, bool freely);
    QPoint caught(const QPoint &place);
    QRect resized(const QPoint &pointer) const;

    int m_direction = moveDirection;
    bool m_isHeld = false;
    QPoint m_pressOffset;
    QRect m_pressed; ///< geometry at the press
    double m_aspect = 0.0;
    int m_allowedDirections = 31;
    QRect m_lastGeometry{QPoint(-1, -1), QPoint(-1, -1)};
};
