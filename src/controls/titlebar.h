// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

/// The title row of a frameless window: dragging it moves the window, and a maximized window
/// becomes a normal one under the cursor. Makes its window frameless.
class TitleBar : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool dblClkEnable READ dblClkEnable WRITE setDblClkEnable)

public:
    explicit TitleBar(QWidget *parent = nullptr);

    /// Whether a double click, or a drag to the top of the screen, maximizes the window.
    bool dblClkEnable() const { return m_dblClkEnable; }
    void setDblClkEnable(bool enable) { m_dblClkEnable = enable; }

public slots:
    void windowMaximized();
    void windowMinimized();
    void windowClose();
    /// Acts on a maximized window only.
    void windowNormal();
    void windowToggleMaximized();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void beginMove();

    QPoint m_pressPos; // in the bar's coordinates
    bool m_pressed = false;
    bool m_firstMove = true;
    bool m_stayedPut = true;
    bool m_dblClkEnable = false;
};
