// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskrowsview.h"

#include "controls/runmodal.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include <QPointer>

#include <algorithm>
#include <utility>

TaskRowsView::TaskRowsView(QWidget *parent) : RowsView(parent)
{
    connect(&m_batch, &TaskBatch::groupStateChanged, this, &TaskRowsView::taskGrpStateChanged);
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
    for (const TaskRowWidget *row : rows()) {
        if (TaskBatch::canStart(row->task()->state()))
            tasks += row->task();
    }
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
    connect(row, &TaskRowWidget::editedForAll, this, [this, row] { shareEdited(row); });
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
        if (mayStart(*row))
            m_batch.start(task);
        break;
    case TaskOperation::OpenFolder:
        revealInFileManager(row->outputPath());
        break;
    case TaskOperation::Delete:
        askAndRemove(row);
        break;
    case TaskOperation::Pause:
        m_batch.pause(task);
        break;
    case TaskOperation::Stop:
        m_batch.stop(task);
        break;
    case TaskOperation::Resume:
        m_batch.resume(task);
        break;
    case TaskOperation::Restart:
        m_batch.restart(task);
        break;
    }
}

void TaskRowsView::shareEdited(const TaskRowWidget *edited)
{
    for (TaskRowWidget *row : rows()) {
        if (row != edited && TaskBatch::takesChoices(*row->task()))
            row->adoptEdited(*edited);
    }
}

// The user is told when a preset has to be chosen before.
bool TaskRowsView::mayStart(const TaskRowWidget &row)
{
    trackStart(QStringLiteral("单个转换"));
    const bool isChosen = !needsPreset() || row.encParamInfoID() != 0;
    if (!isChosen)
        runModal(new MediaFormatSetTipsDialog(this));
    return isChosen;
}

void TaskRowsView::askAndRemove(TaskRowWidget *row)
{
    const QPointer<TaskRowWidget> alive(row);
    const bool mayGo =
        !TaskBatch::isUnderWay(*row->task()) ||
        MediaMessageBox::ask(tr("提示"), tr("该文件正在转换，删除会停止转换。确定删除吗？"), this);
    if (mayGo && alive && alive->task())
        removeRow(alive);
}

void TaskRowsView::removeRow(TaskRowWidget *row)
{
    m_batch.stop(row->task());
    deleteRow(row);
}

bool TaskRowsView::isWorking() const
{
    const QVector<TaskRowWidget *> all = rows();
    return std::any_of(all.begin(), all.end(), [](const TaskRowWidget *row) {
        return TaskBatch::isUnderWay(*row->task()) || TaskBatch::isWaiting(*row->task());
    });
}

QString TaskRowsView::startHindrance() const
{
    if (isEmpty())
        return tr("请先添加文件");
    const QVector<TaskRowWidget *> all = rows();
    const bool hasWork = std::any_of(all.begin(), all.end(), [](const TaskRowWidget *row) {
        return row->task()->isEnabled() && TaskBatch::canStart(row->task()->state());
    });
    return hasWork || isWorking() ? QString() : tr("列表中没有等待转换的文件");
}
