// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/taskbatch.h"

#include <QWidget>

class TaskRowWidget;

/// Base of the lists and trees of a page: rows that show one task each, the batch that runs them,
/// and the page-wide choices that new rows start with.
class TaskRowsWidget : public QWidget
{
    Q_OBJECT

public:
    enum TaskGrpState { GroupStarted = 1, GroupEnded = 2 };
    Q_ENUM(TaskGrpState)

    explicit TaskRowsWidget(QWidget *parent = nullptr);

    /// Adds a row for each file, with a dialog that shows how far this is and can end it.
    void addFiles(const QStringList &files);
    virtual void addFile(const QString &path) = 0;
    /// Deletes every row with its task; what runs is stopped.
    virtual void clear() = 0;

    /// The preset of new rows and of those that have not begun; 0 stands for none.
    void setEncParamInfoID(quint32 id);
    quint32 encParamInfoID() const { return m_encParamInfoID; }
    /// The folder of the results of new rows and of those that have not begun.
    void setOutPath(const QString &path);
    QString outPath() const { return m_outPath; }

    /// Starts every row that can be started.
    /// @param groupName any text but an empty one
    void convertAll(const QString &groupName);

signals:
    void mediaListEmptyChanged(bool empty);
    void taskGrpStateChanged(const QString &taskGrpName, TaskRowsWidget::TaskGrpState state);

protected:
    /// The rows that hold a task, in their order.
    virtual QVector<TaskRowWidget *> rows() const = 0;
    /// Number of the page in usage tracking.
    virtual int trackingPage() const = 0;
    /// Whether a start needs a chosen preset.
    virtual bool needsPreset() const { return true; }
    /// Deletes the row's item.
    virtual void deleteRow(TaskRowWidget *row) = 0;
    virtual bool isEmpty() const = 0;

    /// Takes a new row, whose task is in its item, into the batch and gives it the page's preset.
    void adoptRow(TaskRowWidget *row);

private:
    bool presetIsMissing();
    void operate(TaskRowWidget *row, TaskOperation operation);
    static void addHistory(const TaskRowWidget &row);
    void trackStart(const QString &mode) const;
    void deleteFocusedRow();

    TaskBatch m_batch;
    quint32 m_encParamInfoID = 0;
    QString m_outPath;
};
