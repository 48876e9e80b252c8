// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskrowsview.h"

#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include <QPointer>

#include <utility>

TaskRowsView::TaskRowsView(QWidget *parent) : RowsView(parent)
{
    connect(&m_batch, &TaskBatch::groupStateChanged, this,
            [this](const QString &name, TaskBatch::GroupState state) {
                emit taskGrpStateChanged(name, TaskGrpState(state));
            });
}

void TaskRowsView::setEncParamInfoID(quint32 id)
{
    RowsView::setEncParamInfoID(id);
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            row->setEncParamInfoID(id);
    }
}

void TaskRowsView::setOutPath(const QString &path)
{
    RowsView::setOutPath(path);
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            row->setOutputDir(path);
    }
}

void TaskRowsView::convertAll(const QString &groupName)
{
    trackStart(QStringLiteral("全部转换"));
    if (groupName.isEmpty() || m_batch.isRunning() || presetIsMissing())
        return;
    QVector<MediaTask *> tasks;
    for (const TaskRowWidget *row : rows())
        tasks += row->task();
    m_batch.startAll(groupName, tasks);
}

void TaskRowsView::trackStart(const QString &mode) const
{
    trackEvent(function(), QStringLiteral("video_convert_start"),
               {{QStringLiteral("convert_number_mode"), mode}});
}

void TaskRowsView::noteEmptiness()
{
    const bool empty = isEmpty();
    if (std::exchange(m_wasEmpty, empty) != empty)
        emit mediaListEmptyChanged(empty);
}

QSharedPointer<MediaTask> TaskRowsView::createConversion(const QString &path) const
{
    auto *param = new ConvertTaskParam;
    param->inputFile = path;
    param->outputDir = outPath();
    QSharedPointer<MediaTask> task(createGroupTask(ComplexConvertKind));
    task->setParam(param);
    return task;
}

void TaskRowsView::adoptRow(TaskRowWidget *row)
{
    MediaTask *task = row->task();
    row->setEncParamInfoID(encParamInfoID());
    m_batch.watch(task);
    connect(row, &TaskRowWidget::taskOperationChange, this,
            [this, row](TaskOperation operation) { operate(row, operation); });
    const QPointer<TaskRowWidget> alive(row);
    connect(task, &MediaTask::taskStateChanged, this, [this, alive](MediaTask::State state) {
        if (state == MediaTask::DESTORIED)
            noteEmptiness();
        else if (alive && state == MediaTask::FINISHED)
            addHistory(alive->sourcePath(), alive->outputPath());
    });
}

void TaskRowsView::operate(TaskRowWidget *row, TaskOperation operation)
{
    MediaTask *task = row->task();
    if (!task)
        return;
    switch (operation) {
    case TaskOperation::Start:
        trackStart(QStringLiteral("单个转换"));
        if (needsPreset() && row->encParamInfoID() == 0)
            MediaFormatSetTipsDialog(this).exec();
        else
            m_batch.start(task);
        break;
    case TaskOperation::OpenFolder:
        revealInFileManager(row->outputPath());
        break;
    case TaskOperation::Delete:
        m_batch.stop(task);
        deleteRow(row);
        break;
    case TaskOperation::Pause:
    case TaskOperation::Stop:
    case TaskOperation::Resume:
        m_batch.operate(operation, task);
        break;
    }
}
