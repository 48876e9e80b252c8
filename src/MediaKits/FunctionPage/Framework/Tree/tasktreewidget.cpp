// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/tasktreewidget.h"

#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include <QSignalBlocker>
#include <QVariant>
#include <QVBoxLayout>

TaskTreeWidget::TaskTreeWidget(QWidget *parent) : TaskRowsView(parent), m_tree(new RowTree)
{
    qRegisterMetaType<ItemOperation>("ItemOperation");
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree);
    connect(this, &TaskTreeWidget::mediaListEmptyChanged, this,
            &TaskTreeWidget::mediaTreeEmptyChanged);
}

TaskTreeWidget::~TaskTreeWidget()
{
    // While all that the tasks' last signals reach still lives; the page may be half gone.
    const QSignalBlocker blocker(this);
    m_tree->clearRows();
}

void TaskTreeWidget::addFile(const QString &path)
{
    SourceRowWidget *source = createSourceRow(m_tree->addSource(path));
    connect(source, &SourceRowWidget::itemOperationActived, this, &TaskTreeWidget::operateSource);
    connect(source, &SourceRowWidget::pictureTaken, this, [this, source](const QPixmap &picture) {
        for (MediaRowWidget *row : m_tree->fragmentRows(source->item().treeItem()))
            row->setPicture(picture);
    });
    m_tree->showRow(source);
    noteEmptiness();
}

void TaskTreeWidget::operateSource(QTreeWidgetItem *item, ItemOperation operation)
{
    SourceRowWidget *source = sourceRow(item);
    if (!source)
        return;
    switch (operation) {
    case ItemOperation::AddFragments:
        if (source->sourceInfo())
            addFragments(source);
        break;
    case ItemOperation::Delete:
        for (MediaRowWidget *fragment : m_tree->fragmentRows(item))
            fragment->on_btnDel_clicked();
        m_tree->deleteRow(source);
        noteEmptiness();
        break;
    }
}

void TaskTreeWidget::addFragments(SourceRowWidget *source)
{
    const QPointer<SourceRowWidget> alive(source);
    markFragments(source);
    if (!alive || source->item().isNull())
        return;
    const QTreeWidgetItem *item = source->item().treeItem();
    m_tree->expandAll();
    if (item->childCount() > 0)
        m_tree->scrollToItem(item->child(item->childCount() - 1));
}

void TaskTreeWidget::addFragment(SourceRowWidget *source,
                                 const std::function<void(ConvertTaskParam &)> &fill)
{
    const auto task = createConversion(source->sourcePath());
    fill(*static_cast<ConvertTaskParam *>(task->param()));
    QTreeWidgetItem *sourceItem = source->item().treeItem();
    QTreeWidgetItem *item = RowTree::addFragment(sourceItem);
    item->setData(0, TaskRole, QVariant::fromValue(task));
    TaskRowWidget *row = createFragmentRow(item);
    adoptRow(row);
    m_tree->showRow(row);
    source->setFragmentCount(sourceItem->childCount());
}

SourceRowWidget *TaskTreeWidget::sourceRow(QTreeWidgetItem *item) const
{
    return qobject_cast<SourceRowWidget *>(m_tree->rowOf(item));
}

QVector<TaskRowWidget *> TaskTreeWidget::rows() const
{
    QVector<TaskRowWidget *> fragments;
    for (MediaRowWidget *row : m_tree->rows()) {
        if (auto *fragment = qobject_cast<TaskRowWidget *>(row))
            fragments += fragment;
    }
    return fragments;
}

void TaskTreeWidget::deleteRow(TaskRowWidget *row)
{
    QTreeWidgetItem *sourceItem = row->item().treeItem()->parent();
    m_tree->deleteRow(row);
    if (SourceRowWidget *source = sourceRow(sourceItem))
        source->setFragmentCount(sourceItem->childCount());
}

void TaskTreeWidget::clear()
{
    m_tree->clearRows();
    noteEmptiness();
}

bool TaskTreeWidget::isEmpty() const
{
    return m_tree->topLevelItemCount() == 0;
}
