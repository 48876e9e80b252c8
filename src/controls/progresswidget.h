// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A widget whose background doubles as a progress bar: the root of list rows.
class ProgressWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)

public:
    explicit ProgressWidget(QWidget *parent = nullptr);

    /// From 0 to the maximum; below 0, as at first, nothing is drawn.
    int value() const { return m_value; }
    /// Emits nothing.
    void setValue(int value);

    /// The value that fills the whole width, 5000 at first.
    int maximum() const { return m_maximum; }
    void setMaximum(int maximum);

    /// Kept for the forms that set it; the scale begins at 0 all the same.
    int minimum() const { return m_minimum; }
    void setMinimum(int minimum) { m_minimum = minimum; }

    /// A flat progress has no accent line.
    bool isFlat() const { return m_flat; }
    void setFlat(bool flat);

signals:
    void valueChanged(int value);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_value = -1;
    int m_maximum = 5000;
    int m_minimum = 0;
    bool m_flat = false;
};
