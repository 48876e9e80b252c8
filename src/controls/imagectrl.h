// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QWidget>

/// A picture that fills the widget, whatever its proportions are.
class ImageCtrl : public QWidget
{
    Q_OBJECT

public:
    explicit ImageCtrl(QWidget *parent = nullptr);

    QPixmap pixmap() const { return m_pixmap; }
    void setPixmap(const QPixmap &pixmap);
    /// From 0 to 1.
    double opacity() const { return m_opacity; }
    void setOpacity(double opacity);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_pixmap;
    double m_opacity = 1.0;
};
