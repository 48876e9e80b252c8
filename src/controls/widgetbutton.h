// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

/// A button that is filled by a layout of its own and tells style sheets about the mouse: its
/// dynamic property "mousestate" is "normal", "hover" or "pressed", its property "checked" follows
/// the toggling.
class WidgetButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(MouseState mouseState READ mouseState NOTIFY mouseStateChanged)

public:
    enum MouseState { NORMAL = 1, HOVER = 2, PRESSED = 3 };
    Q_ENUM(MouseState)

    explicit WidgetButton(QWidget *parent = nullptr);

    MouseState mouseState() const { return m_mouseState; }
    QSize sizeHint() const override;

public slots:
    void onToggled(bool toggled);

signals:
    void mouseStateChanged(WidgetButton::MouseState state);

protected:
    bool event(QEvent *event) override;

private:
    void setMouseState(MouseState state);

    MouseState m_mouseState = NORMAL;
};
