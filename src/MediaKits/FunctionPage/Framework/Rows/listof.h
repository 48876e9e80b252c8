// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

/// Base of the lists whose rows need no more than their item.
template<class Row, MediaFunction Function>
class ListOf : public TaskListWidget
{
public:
    using TaskListWidget::TaskListWidget;

protected:
    MediaFunction function() const override { return Function; }
    TaskRowWidget *createRow(QListWidgetItem *item) override { return new Row(item, this); }
};
