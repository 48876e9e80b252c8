// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

#include <limits>

class WindowShadow;

/// A short message over a window. It deletes itself when it is closed or its time is over.
class Toast : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int shadowRadius READ shadowRadius WRITE setShadowRadius)

public:
    /// As x or y: the middle of the parent.
    static constexpr int centred = std::numeric_limits<int>::min();

    /// Shows `text` for `ms` milliseconds, or until closed when `ms` is 0 or less. `x` and `y` are
    /// in the parent's coordinates. Without a parent the main window is it. The toast is the
    /// parent's child: it goes with it, and `QObject::destroyed` tells of its end either way.
    static Toast *showToast(const QString &text, int ms, int x = centred, int y = centred,
                            QWidget *parent = nullptr);

    /// Width of the shadow in pixels.
    int shadowRadius() const;
    void setShadowRadius(int radius);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Toast(const QString &text, QPoint place, QWidget *parent);

    int m_x;
    int m_y;
    WindowShadow *m_shadow;
    QPoint m_shadowOffset;
};
