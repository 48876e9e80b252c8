// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/tasktreewidget.h"

#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include <QSignalBlocker>
#include <QVariant>
#include <QVBoxLayout>

#include <algorithm>

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
        for (TaskRowWidget *fragment : fragmentsOf(source))
            fragment->adoptPicture(picture);
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
        askAndRemove(source);
        break;
    }
}

void TaskTreeWidget::askAndRemove(SourceRowWidget *source)
{
    const QVector<TaskRowWidget *> fragments = fragmentsOf(source);
    const bool works =
        std::any_of(fragments.begin(), fragments.end(),
                    [](const TaskRowWidget *row) { return TaskBatch::isUnderWay(*row->task()); });
    const QPointer<SourceRowWidget> alive(source);
    const QString question = tr("该文件的片段正在转换，删除会停止转换。确定删除吗？");
    if (works && !MediaMessageBox::ask(tr("提示"), question, this))
        return;
    if (!alive || alive->item().isNull())
        return;
    for (TaskRowWidget *fragment : fragmentsOf(alive))
        removeRow(fragment);
    m_tree->deleteRow(alive);
    noteEmptiness();
}

QVector<TaskRowWidget *> TaskTreeWidget::fragmentsOf(const SourceRowWidget *source) const
{
    QVector<TaskRowWidget *> fragments;
    for (MediaRowWidget *row : m_tree->fragmentRows(source->item().treeItem()))
        fragments += static_cast<TaskRowWidget *>(row);
    return fragments;
}

QString TaskTreeWidget::startHindrance() const
{
    if (!isEmpty() && rows().isEmpty())
        return tr("请先点击“添加片段”，标出要转换的片段");
    return TaskRowsView::startHindrance();
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
