// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowlist.h"

#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowsight.h"

RowList::RowList(QWidget *parent)
    : QListWidget(parent), m_sight(new RowSight(this, [this] { return rows(); }))
{
    setObjectName(QStringLiteral("convertList"));
    setUniformItemSizes(true);
}

bool RowList::focusNextPrevChild(bool next)
{
    if (!QListWidget::focusNextPrevChild(next))
        return false;
    if (const MediaRowWidget *row = RowSight::focusedRow())
        scrollToItem(row->item().listItem());
    return true;
}

// Items grow with the view by themselves, but shrink only with a new layout.
void RowList::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    doItemsLayout();
}

QListWidgetItem *RowList::addPath(const QString &path)
{
    auto *item = new QListWidgetItem;
    item->setData(SourcePathRole, path);
    item->setData(Qt::SizeHintRole, QSize(-1, RowSight::rowHeight));
    addItem(item);
    m_sight->scrollToNewest(count());
    return item;
}

void RowList::showRow(MediaRowWidget *row)
{
    setItemWidget(row->item().listItem(), row);
    m_sight->rowShown(count());
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
    m_sight->lookSoon();
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
