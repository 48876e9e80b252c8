// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Base of the main window's drop-downs: frameless, with a shadow. A click elsewhere or Escape
/// closes one, the arrow keys walk through it, and it deletes itself when it closes.
class PopupWindow : public QWidget
{
    Q_OBJECT

public:
    explicit PopupWindow(QWidget *parent);

    /// Takes the size of the content as the style sheet wants it, also before the first show.
    void fitContent();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
