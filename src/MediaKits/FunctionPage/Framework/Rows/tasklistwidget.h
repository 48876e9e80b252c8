// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/taskrowsview.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

class QListWidgetItem;
class RowList;

/// Base of the lists: one row a file, each with a task of its own.
class TaskListWidget : public TaskRowsView
{
    Q_OBJECT

public:
    explicit TaskListWidget(QWidget *parent = nullptr);
    ~TaskListWidget() override;

    void addFile(const QString &path) override;
    void clear() override;

protected:
    /// A new task with its parameter for a source: a conversion, unless a list says otherwise.
    virtual QSharedPointer<MediaTask> createTask(const QString &path);
    virtual TaskRowWidget *createRow(QListWidgetItem *item) = 0;

    QVector<TaskRowWidget *> rows() const override;
    void deleteRow(TaskRowWidget *row) override;
    bool isEmpty() const override;

private:
    RowList *m_list;
};
