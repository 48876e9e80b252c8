// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A slider that jumps to the point that is clicked.
class ASlider : public QSlider
{
    Q_OBJECT

public:
    explicit ASlider(QWidget *parent = nullptr);
    explicit ASlider(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
};
