// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/taskrowswidget.h"

#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/mediaimportdialog.h"
#include "MediaKits/FunctionPage/Framework/taskrowwidget.h"
#include "MediaKits/MediaFormats/revealfile.h"

#include <QApplication>
#include <QDateTime>
#include <QPointer>
#include <QShortcut>

TaskRowsWidget::TaskRowsWidget(QWidget *parent) : QWidget(parent)
{
    connect(&m_batch, &TaskBatch::groupStateChanged, this,
            [this](const QString &name, TaskBatch::GroupState state) {
                emit taskGrpStateChanged(name, TaskGrpState(state));
            });
    auto *shortcut = new QShortcut(QKeySequence(QKeySequence::Delete), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, &TaskRowsWidget::deleteFocusedRow);
}

void TaskRowsWidget::addFiles(const QStringList &files)
{
    const QPointer<TaskRowsWidget> alive(this);
    importFiles(this, files, [alive](const QString &path) {
        if (alive)
            alive->addFile(path);
    });
}

void TaskRowsWidget::setEncParamInfoID(quint32 id)
{
    m_encParamInfoID = id;
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            row->setEncParamInfoID(id);
    }
}

void TaskRowsWidget::setOutPath(const QString &path)
{
    m_outPath = path;
    for (TaskRowWidget *row : rows()) {
        if (TaskBatch::takesChoices(*row->task()))
            row->setOutputDir(path);
    }
}

void TaskRowsWidget::convertAll(const QString &groupName)
{
    trackStart(QStringLiteral("全部转换"));
    if (groupName.isEmpty() || m_batch.isRunning() || presetIsMissing())
        return;
    QVector<MediaTask *> tasks;
    for (const TaskRowWidget *row : rows())
        tasks += row->task();
    m_batch.startAll(groupName, tasks);
}

bool TaskRowsWidget::presetIsMissing()
{
    if (!needsPreset() || m_encParamInfoID != 0)
        return false;
    MediaFormatSetTipsDialog(this).exec();
    return true;
}

void TaskRowsWidget::trackStart(const QString &mode) const
{
    trackEvent(trackingPage(), QStringLiteral("video_convert_start"),
               {{QStringLiteral("convert_number_mode"), mode}});
}

void TaskRowsWidget::adoptRow(TaskRowWidget *row)
{
    MediaTask *task = row->task();
    row->setEncParamInfoID(m_encParamInfoID);
    m_batch.watch(task);
    connect(row, &TaskRowWidget::taskOperationChange, this,
            [this, row](TaskOperation operation) { operate(row, operation); });
    const QPointer<TaskRowWidget> alive(row);
    connect(task, &MediaTask::taskStateChanged, this, [this, alive](MediaTask::State state) {
        if (state == MediaTask::DESTORIED && isEmpty())
            emit mediaListEmptyChanged(true);
        else if (alive && state == MediaTask::FINISHED)
            addHistory(*alive);
    });
}

void TaskRowsWidget::operate(TaskRowWidget *row, TaskOperation operation)
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

void TaskRowsWidget::addHistory(const TaskRowWidget &row)
{
    HistoryRecord::instance().add(
        {QDateTime::currentDateTime().toString(QStringLiteral("yyyy.MM.dd hh:mm")),
         row.sourcePath(), row.outputPath()});
}

void TaskRowsWidget::deleteFocusedRow()
{
    for (QWidget *widget = QApplication::focusWidget(); widget && widget != this;
         widget = widget->parentWidget()) {
        if (auto *row = qobject_cast<TaskRowWidget *>(widget)) {
            row->on_btnDel_clicked();
            return;
        }
    }
}
