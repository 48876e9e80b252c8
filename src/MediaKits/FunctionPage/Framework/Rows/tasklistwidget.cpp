// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/tasklistwidget.h"

#include "MediaKits/FunctionPage/Framework/Rows/rowlist.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include <QSignalBlocker>
#include <QVariant>
#include <QVBoxLayout>

TaskListWidget::TaskListWidget(QWidget *parent) : TaskRowsView(parent), m_list(new RowList)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
}

TaskListWidget::~TaskListWidget()
{
    // While all that the tasks' last signals reach still lives; the page may be half gone.
    const QSignalBlocker blocker(this);
    TaskListWidget::clear();
}

void TaskListWidget::addFile(const QString &path)
{
    QListWidgetItem *item = m_list->addPath(path);
    item->setData(TaskRole, QVariant::fromValue(createTask(path)));
    TaskRowWidget *row = createRow(item);
    adoptRow(row);
    m_list->showRow(row);
    noteEmptiness();
}

QSharedPointer<MediaTask> TaskListWidget::createTask(const QString &path)
{
    return createConversion(path);
}

QVector<TaskRowWidget *> TaskListWidget::rows() const
{
    QVector<TaskRowWidget *> all;
    for (MediaRowWidget *row : m_list->rows())
        all += static_cast<TaskRowWidget *>(row);
    return all;
}

void TaskListWidget::deleteRow(TaskRowWidget *row)
{
    m_list->deleteRow(row);
}

void TaskListWidget::clear()
{
    m_list->clearRows();
    noteEmptiness();
}

bool TaskListWidget::isEmpty() const
{
    return m_list->count() == 0;
}
