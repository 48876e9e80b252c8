// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// A list that may have no current row: to reach it by the keyboard chooses none.
class FilterList : public QListWidget
{
    Q_OBJECT

public:
    using QListWidget::QListWidget;

protected:
    void focusInEvent(QFocusEvent *event) override;
};
