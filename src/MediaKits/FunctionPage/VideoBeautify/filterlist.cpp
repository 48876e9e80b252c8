// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/filterlist.h"

#include <QSignalBlocker>

void FilterList::focusInEvent(QFocusEvent *event)
{
    const bool hasCurrent = currentRow() >= 0;
    // The base class makes the first row the current one.
    const QSignalBlocker blocker(selectionModel());
    QListWidget::focusInEvent(event);
    if (!hasCurrent)
        selectionModel()->clear();
}
