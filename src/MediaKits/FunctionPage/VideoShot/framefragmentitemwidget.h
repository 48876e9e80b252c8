// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QListWidgetItem;

/// The row of one moment: a small picture of it, with its time and the button that deletes it on
/// top.
class FrameFragmentItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// Of the pictures, in pixels at 100 %.
    static constexpr int imageWidth = 218;

    /// @param item goes when the user deletes the row
    /// @param ms the moment
    FrameFragmentItemWidget(QListWidgetItem *item, int ms, QWidget *parent);

    int ms() const { return m_ms; }
    /// Shows a file; a row whose file is missing or no picture stays without one.
    void loadImage(const QString &path);
    /// Whether it is the one that the keyboard works on.
    void setCurrent(bool current);

public slots:
    void on_btnDel_clicked();

private:
    QWidget *makeFront(int ms);

    QListWidgetItem *const m_item;
    const int m_ms;
    QLabel *m_image;
    QWidget *m_front;
};
