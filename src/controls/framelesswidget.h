// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

/// A frameless window that is moved by its area and resized at its edges.
class FramelessWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FramelessWidget(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QPoint m_dragStart; // in the widget's coordinates
};
