// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowsight.h"

#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QScrollBar>

#include <utility>

namespace {

// Rows beyond the edges that keep their widgets, so that small scrolls make none.
constexpr int rowsBeyond = 8;
constexpr int delayMs = 120;
// A row's widgets take some 10 ms to make and as long to paint; more at once would be felt.
constexpr int rowsAtOnce = 1;

} // namespace

RowSight::RowSight(QAbstractItemView *view, std::function<QVector<MediaRowWidget *>()> rows)
    : QObject(view), m_view(view), m_rows(std::move(rows))
{
    view->setFocusPolicy(Qt::NoFocus);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setSelectionMode(QAbstractItemView::NoSelection);
    view->setProperty("showDropIndicator", false);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->verticalScrollBar()->setSingleStep(rowHeight / 4);
    view->installEventFilter(this);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RowSight::onTimeout);
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (!m_timer.isActive())
            look();
    });
}

bool RowSight::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        lookSoon();
    return QObject::eventFilter(watched, event);
}

void RowSight::lookSoon()
{
    if (!m_timer.isActive())
        m_timer.start(delayMs);
}

void RowSight::rowShown(int count)
{
    // The rows of a long import are only in sight once it has come to rest.
    if (count <= rowsBeyond)
        look();
    else
        m_timer.start(delayMs);
}

// Each scroll moves the rows' widgets, all of them.
void RowSight::scrollToNewest(int count)
{
    if (count <= rowsBeyond)
        m_view->scrollToBottom();
    else
        m_newestWanted = true;
}

void RowSight::onTimeout()
{
    if (std::exchange(m_newestWanted, false))
        m_view->scrollToBottom();
    look();
}

void RowSight::look()
{
    constexpr int margin = rowsBeyond * rowHeight;
    const int bottom = m_view->viewport()->height();
    int top = -m_view->verticalScrollBar()->value();
    int made = 0;
    for (MediaRowWidget *row : m_rows()) {
        const int end = top + row->item().data(Qt::SizeHintRole).toSize().height();
        const bool inSight = end > 0 && top <= bottom;
        if (inSight && made >= rowsAtOnce)
            m_timer.start(0);
        else if (inSight)
            made += int(row->setInSight(true));
        else if (end < -margin || top > bottom + margin)
            row->setInSight(false);
        top = end;
    }
}

MediaRowWidget *RowSight::focusedRow()
{
    for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (auto *row = qobject_cast<MediaRowWidget *>(widget))
            return row;
    }
    return nullptr;
}
