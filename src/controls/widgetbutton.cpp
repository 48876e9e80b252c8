// SPDX-License-Identifier: MIT
#include "controls/widgetbutton.h"

#include "controls/repolish.h"

#include <QEvent>
#include <QVariant>

WidgetButton::WidgetButton(QWidget *parent) : QPushButton(parent)
{
    connect(this, &QAbstractButton::toggled, this, &WidgetButton::onToggled);
}

QSize WidgetButton::sizeHint() const
{
    return QWidget::sizeHint(); // NOLINT(bugprone-parent-virtual-call): that of its layout
}

void WidgetButton::onToggled(bool toggled)
{
    setProperty("checked", toggled);
    repolish(this);
}

bool WidgetButton::event(QEvent *event)
{
    // Before the click is dealt with: that may open a dialog and take long.
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::MouseButtonRelease:
        setMouseState(HOVER);
        break;
    case QEvent::Leave:
        setMouseState(NORMAL);
        break;
    case QEvent::MouseButtonPress:
        setMouseState(PRESSED);
        break;
    default:
        break;
    }
    return QPushButton::event(event);
}

void WidgetButton::setMouseState(MouseState state)
{
    if (state == m_mouseState)
        return;
    m_mouseState = state;
    emit mouseStateChanged(state);
    const QString names[] = {QStringLiteral("normal"), QStringLiteral("hover"),
                             QStringLiteral("pressed")};
    setProperty("mousestate", names[state - NORMAL]);
    repolish(this);
}
