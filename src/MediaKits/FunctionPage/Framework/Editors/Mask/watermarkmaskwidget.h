// SPDX-License-Identifier: MIT
#pragma once

#include <QLine>
#include <QVector>
#include <QWidget>

/// The empty mask that carries movable boxes.
class WatermarkMaskWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WatermarkMaskWidget(QWidget *parent = nullptr);

    /// Parent of the boxes.
    QWidget *area() const { return m_area; }
    /// Shows thin lines that a box was caught by, in the area's pixels.
    void showGuides(const QVector<QLine> &guides);
    /// Where those lines are drawn.
    QRegion guideRegion() const;

private:
    QVector<QWidget *> m_guides;
    QWidget *const m_area;
};
