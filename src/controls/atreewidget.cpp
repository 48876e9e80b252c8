// SPDX-License-Identifier: MIT
#include "controls/atreewidget.h"

#include <QDynamicPropertyChangeEvent>
#include <QStyle>

ATreeWidget::ATreeWidget(QWidget *parent) : QTreeWidget(parent) {}

bool ATreeWidget::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange) {
        // Those of Qt's own are set by the polishing itself.
        const auto *change = static_cast<QDynamicPropertyChangeEvent *>(event);
        if (!change->propertyName().startsWith("_q_")) {
            m_polishDue = true;
            viewport()->update();
        }
    }
    return QTreeWidget::event(event);
}

void ATreeWidget::paintEvent(QPaintEvent *event)
{
    // Polishing asks for another painting: done in each, it would never come to rest.
    if (m_polishDue) {
        m_polishDue = false;
        style()->unpolish(this);
        style()->polish(this);
    }
    QTreeView::paintEvent(event);
}
