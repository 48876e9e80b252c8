// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowsview.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskoperation.h"

class TaskRowWidget;

/// Base of the lists and trees whose rows show one task each; holds the batch that runs them.
class TaskRowsView : public RowsView
{
    Q_OBJECT

public:
    explicit TaskRowsView(QWidget *parent = nullptr);

    /// The preset of new rows and of those that have not begun; 0 stands for none.
    void setEncParamInfoID(quint32 id) override;
    /// The folder of the results of new rows and of those that have not begun.
    void setOutPath(const QString &path) override;

    bool isWorking() const override;
    QString startHindrance() const override;
    void convertAll(const QString &groupName) override;

protected:
    /// The rows that hold a task, in their order.
    virtual QVector<TaskRowWidget *> rows() const = 0;
    /// Deletes the row's item.
    virtual void deleteRow(TaskRowWidget *row) = 0;
    virtual bool isEmpty() const = 0;

    /// Tells when the last row went or the first one came.
    void noteEmptiness();

    /// A complex conversion of a file into the folder of the results, as most pages have it.
    QSharedPointer<MediaTask> createConversion(const QString &path) const;
    /// Takes a new row, whose task is in its item, into the batch and gives it the page's preset.
    void adoptRow(TaskRowWidget *row);
    /// Stops the row's task and deletes the row, without a question.
    void removeRow(TaskRowWidget *row);

private:
    void operate(TaskRowWidget *row, TaskOperation operation);
    void shareEdited(const TaskRowWidget *edited);
    bool mayStart(const TaskRowWidget &row);
    void askAndRemove(TaskRowWidget *row);
    void trackStart(const QString &mode) const;

    TaskBatch m_batch;
    bool m_wasEmpty = true;
};
