// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/rowlist.h"

#include "MediaKits/FunctionPage/Framework/mediarowwidget.h"

#include <QApplication>
#include <QScrollBar>

namespace {

constexpr int rowHeight = 112;
// Rows beyond the edges that keep their widgets, so that small scrolls make none.
constexpr int rowsBeyond = 8;
constexpr int sightDelayMs = 120;
// A row's widgets take some 10 ms to make; more at once would be felt.
constexpr int rowsAtOnce = 2;

} // namespace

RowList::RowList(QWidget *parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("convertList"));
    setFocusPolicy(Qt::NoFocus);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    setProperty("showDropIndicator", false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(rowHeight / 4);
    setUniformItemSizes(true);
    m_sightTimer.setSingleShot(true);
    connect(&m_sightTimer, &QTimer::timeout, this, &RowList::updateSight);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (!m_sightTimer.isActive())
            updateSight();
    });
}

void RowList::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    lookSoon();
}

bool RowList::focusNextPrevChild(bool next)
{
    if (!QListWidget::focusNextPrevChild(next))
        return false;
    for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (const auto *row = qobject_cast<MediaRowWidget *>(widget))
            scrollToItem(row->item().listItem());
    }
    return true;
}

void RowList::lookSoon()
{
    if (!m_sightTimer.isActive())
        m_sightTimer.start(sightDelayMs);
}

void RowList::updateSight()
{
    const int top = verticalScrollBar()->value();
    const int first = top / rowHeight;
    const int last = (top + viewport()->height()) / rowHeight;
    int made = 0;
    for (int i = 0; i < count(); ++i) {
        MediaRowWidget *row = rowOf(item(i));
        if (!row)
            continue;
        const bool inSight = i >= first && i <= last;
        if (inSight && made >= rowsAtOnce)
            m_sightTimer.start(0);
        else if (inSight)
            made += int(row->setInSight(true));
        else if (i < first - rowsBeyond || i > last + rowsBeyond)
            row->setInSight(false);
    }
}

QListWidgetItem *RowList::addPath(const QString &path)
{
    auto *item = new QListWidgetItem;
    item->setData(SourcePathRole, path);
    item->setData(Qt::SizeHintRole, QSize(-1, rowHeight));
    addItem(item);
    scrollToItem(item);
    return item;
}

void RowList::showRow(MediaRowWidget *row)
{
    setItemWidget(row->item().listItem(), row);
    // The rows of a long import are only in sight once it has come to rest.
    if (count() <= rowsBeyond)
        updateSight();
    else
        m_sightTimer.start(sightDelayMs);
}

MediaRowWidget *RowList::rowOf(QListWidgetItem *item) const
{
    return qobject_cast<MediaRowWidget *>(itemWidget(item));
}

QVector<MediaRowWidget *> RowList::rows() const
{
    QVector<MediaRowWidget *> all;
    all.reserve(count());
    for (int i = 0; i < count(); ++i) {
        if (MediaRowWidget *row = rowOf(item(i)))
            all += row;
    }
    return all;
}

QListWidgetItem *RowList::takeItemOf(MediaRowWidget *row)
{
    QListWidgetItem *item = row->item().listItem();
    row->clearItem();
    lookSoon();
    return takeItem(this->row(item));
}

void RowList::deleteRow(MediaRowWidget *row)
{
    delete takeItemOf(row);
}

void RowList::clearRows()
{
    for (MediaRowWidget *row : rows())
        row->clearItem();
    clear();
}
