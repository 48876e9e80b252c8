// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/rowtree.h"

#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowsight.h"

#include <QHeaderView>

namespace {

constexpr int sourceHeight = 40;
constexpr int indent = 48;

} // namespace

RowTree::RowTree(QWidget *parent)
    : QTreeWidget(parent), m_sight(new RowSight(this, [this] { return rows(); }))
{
    setObjectName(QStringLiteral("convertTree"));
    setColumnCount(1);
    header()->hide();
    header()->setSectionResizeMode(QHeaderView::Stretch);
    setIndentation(indent);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
}

bool RowTree::focusNextPrevChild(bool next)
{
    if (!QTreeWidget::focusNextPrevChild(next))
        return false;
    if (const MediaRowWidget *row = RowSight::focusedRow())
        scrollToItem(row->item().treeItem());
    return true;
}

QTreeWidgetItem *RowTree::addSource(const QString &path)
{
    auto *item = new QTreeWidgetItem;
    item->setData(0, SourcePathRole, path);
    item->setData(0, Qt::SizeHintRole, QSize(-1, sourceHeight));
    addTopLevelItem(item);
    m_sight->scrollToNewest(topLevelItemCount());
    return item;
}

QTreeWidgetItem *RowTree::addFragment(QTreeWidgetItem *source)
{
    auto *item = new QTreeWidgetItem;
    for (const int role : {SourcePathRole, MediaInfoRole, PictureRole})
        item->setData(0, role, source->data(0, role));
    item->setData(0, Qt::SizeHintRole, QSize(-1, RowSight::rowHeight));
    source->addChild(item);
    return item;
}

void RowTree::showRow(MediaRowWidget *row)
{
    setItemWidget(row->item().treeItem(), 0, row);
    const QVector<MediaRowWidget *> all = rows();
    const int place = all.indexOf(row);
    if (place > 0)
        row->tabAfter(all.at(place - 1));
    m_sight->rowShown(all.size());
}

MediaRowWidget *RowTree::rowOf(QTreeWidgetItem *item) const
{
    return item ? qobject_cast<MediaRowWidget *>(itemWidget(item, 0)) : nullptr;
}

QVector<MediaRowWidget *> RowTree::rows() const
{
    QVector<MediaRowWidget *> all;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (MediaRowWidget *row = rowOf(topLevelItem(i)))
            all += row;
        all += fragmentRows(topLevelItem(i));
    }
    return all;
}

QVector<MediaRowWidget *> RowTree::fragmentRows(const QTreeWidgetItem *source) const
{
    QVector<MediaRowWidget *> found;
    for (int i = 0; i < source->childCount(); ++i) {
        if (MediaRowWidget *row = rowOf(source->child(i)))
            found += row;
    }
    return found;
}

void RowTree::deleteRow(MediaRowWidget *row)
{
    QTreeWidgetItem *item = row->item().treeItem();
    row->clearItem();
    m_sight->lookSoon();
    delete item;
}

void RowTree::clearRows()
{
    for (MediaRowWidget *row : rows())
        row->clearItem();
    clear();
}
