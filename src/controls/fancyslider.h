// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A slider with its value written at the handle, moved by the dynamic property "textoffset" (a
/// QPoint, pixels) and followed by the dynamic property "suffix".
class FancySlider : public QSlider
{
    Q_OBJECT

public:
    explicit FancySlider(QWidget *parent = nullptr);
    explicit FancySlider(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
