// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The empty mask that carries movable boxes.
class WatermarkMaskWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WatermarkMaskWidget(QWidget *parent = nullptr);

    /// Parent of the boxes.
    QWidget *area() const { return m_area; }

private:
    QWidget *const m_area;
};
