// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowform.h"

#include "MediaKits/FunctionPage/Framework/Rows/rowpicturewidget.h"

#include <QPushButton>
#include <QVariant>

void RowForm::setUpButtons(QPushButton *deleteButton, const RowPictureWidget &picture)
{
    m_deleteButton = deleteButton;
    connect(deleteButton, &QPushButton::clicked, this, &RowForm::deletePressed);
    connect(picture.playButton(), &QPushButton::clicked, this, &RowForm::playSourcePressed);
}

void RowForm::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QPoint fromCorner = m_deleteButton->property("rightTop").toPoint();
    m_deleteButton->move(width() - fromCorner.x(), fromCorner.y());
}
