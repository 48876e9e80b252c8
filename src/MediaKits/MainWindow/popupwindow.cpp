// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/popupwindow.h"

#include "controls/windowshadow.h"
#include "platform/compositor.h"

#include <QKeyEvent>

PopupWindow::PopupWindow(QWidget *parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
{
    setAttribute(Qt::WA_DeleteOnClose);
    // For the round corners, which would be black otherwise.
    setAttribute(Qt::WA_TranslucentBackground, isCompositingActive());
    new WindowShadow(this);
}

void PopupWindow::fitContent()
{
    for (const QWidget *child : findChildren<QWidget *>())
        child->ensurePolished();
    adjustSize();
}

void PopupWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down)
        focusNextChild();
    else if (event->key() == Qt::Key_Up)
        focusPreviousChild();
    else
        QWidget::keyPressEvent(event);
}
