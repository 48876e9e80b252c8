// SPDX-License-Identifier: MIT
#pragma once

#include "platform/globalkeys.h"

#include <QDialog>
#include <QTimer>

class QLabel;

/// Counts the last three seconds before a recording in the middle of a screen. Is accepted at 0;
/// Escape and a click reject it.
class CountdownWnd : public QDialog
{
    Q_OBJECT

public:
    explicit CountdownWnd(QWidget *parent = nullptr);

    /// Begins to count.
    void start();
    /// Moves it to the middle of what the panels of that screen leave.
    void moveToMiddle(const QScreen &screen);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void placeLabel();
    void count();

    QLabel *m_label;
    QTimer m_timer;
    GlobalKeys m_keys;
    int m_counter = 3;
    bool m_isCard = false;
};
