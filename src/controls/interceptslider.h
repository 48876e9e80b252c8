// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPoint>
#include <QSlider>

class QLabel;

/// A time line: the slider's own value is the play head, and two handles trim a span of it. In the
/// editors one unit is a millisecond. The play head reports by sliderPressed, sliderMoved and
/// sliderReleased.
class InterceptSlider : public QSlider
{
    Q_OBJECT
    Q_PROPERTY(int hshifting READ hshifting WRITE setHshifting)
    Q_PROPERTY(QColor spanColor READ spanColor WRITE setSpanColor)

public:
    explicit InterceptSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    explicit InterceptSlider(QWidget *parent = nullptr);

    int leftValue() const { return m_leftValue; }
    int rightValue() const { return m_rightValue; }
    /// Clamped to the slider's range, but not to the other handle; no signal.
    void setLeftValue(int value);
    void setRightValue(int value);

    void setRangeVisible(bool handles, bool span);

    /// Pixels by which the handles stand below the groove's middle; used when a handle is placed.
    int hshifting() const { return m_hshifting; }
    void setHshifting(int pixels) { m_hshifting = pixels; }

    QColor spanColor() const { return m_spanColor; }
    void setSpanColor(const QColor &colour);

signals:
    /// The user drags a handle; a setter called from here holds it back.
    void leftValueChanged(int value);
    void rightValueChanged(int value);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    enum DragHandle { NoHandle = -1, LeftHandle = 0, RightHandle = 1 };

    QLabel *makeHandle(const QString &name);
    QRect groove() const;
    int valueAt(int grooveX) const;
    void placeHandle(QLabel *handle, int value);
    void placeHandles();
    void dragLeft(int distance);
    void dragRight(int distance);

    bool m_spanVisible = true;
    QLabel *m_leftHandle;
    QLabel *m_rightHandle;
    int m_leftValue = 0;
    int m_rightValue = 0;
    QPoint m_lastGlobal; // of the pointer, whatever became of the last move
    DragHandle m_dragHandle = NoHandle;
    int m_hshifting = 0;
    QColor m_spanColor;
};
