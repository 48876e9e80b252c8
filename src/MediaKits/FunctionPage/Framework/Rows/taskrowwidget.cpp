// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include "controls/runmodal.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "MediaKits/MediaInfo/mediainfobase.h"
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "MediaKits/Player/mediapreviewwnd.h"

#include <QPointer>
#include <QTimer>

namespace {

constexpr int fullBarShownMs = 100;
constexpr int fullBar = 100;
constexpr int failedConversionEvent = 50;

} // namespace

TaskRowWidget::TaskRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : MediaRowWidget(item, parent), m_kind(kind)
{
    change([](RowContent &content) {
        content.remainingText = tr("正在计算");
        content.editorEnabled = false;
    });
    watchTask();
}

void TaskRowWidget::watchTask()
{
    const MediaTask *watched = task();
    connect(watched, &MediaTask::taskStateChanged, this, &TaskRowWidget::onTaskState);
    connect(watched, &MediaTask::taskOperateChanged, this, &TaskRowWidget::showOperate);
    connect(watched, &MediaTask::taskProgress, this, &TaskRowWidget::onTaskProgress);
    connect(watched, &MediaTask::taskCustomeMsgCome, this, &TaskRowWidget::onTaskMessage);
}

RowForm *TaskRowWidget::createForm()
{
    auto *form = new TaskRowForm(m_kind.form, isAudioFormat(sourceSuffix()), this);
    connect(form, &TaskRowForm::startPressed, this, &TaskRowWidget::on_btnConvert_clicked);
    connect(form, &TaskRowForm::stopPressed, this, &TaskRowWidget::on_btnStop_clicked);
    connect(form, &TaskRowForm::pauseToggled, this, &TaskRowWidget::on_btnPause_toggled);
    connect(form, &TaskRowForm::playResultPressed, this, &TaskRowWidget::on_btnPlayDst_clicked);
    connect(form, &TaskRowForm::revealPressed, this, &TaskRowWidget::on_btnOpenDir_clicked);
    connect(form, &TaskRowForm::detailsPressed, this, &TaskRowWidget::on_btnErrorDetail_clicked);
    connect(form, &TaskRowForm::nameEdited, this, [this](const QString &typed) {
        if (task())
            renameResult(outputNameFrom(typed, outputName()));
    });
    if (m_kind.openEditor)
        connect(form, &TaskRowForm::editorPressed, this, m_kind.openEditor);
    connectForm(*form);
    return form;
}

MediaTask *TaskRowWidget::task() const
{
    return item().data(TaskRole).value<QSharedPointer<MediaTask>>().data();
}

void TaskRowWidget::renameResult(const QString &name)
{
    setOutputName(name);
    setShown(&RowContent::outputName, name);
}

void TaskRowWidget::keepSource(const QSharedPointer<MediaInfoData> &)
{
    setShown(&RowContent::editorEnabled, TaskBatch::canStart(task()->state()) && editorAllowed());
}

bool TaskRowWidget::acceptsSource(const MediaInfoBase &reader)
{
    if (!m_kind.needsPicture || reader.mediaKind() == MediaInfoBase::HasVideo)
        return true;
    if (reader.mediaKind() == MediaInfoBase::AudioOnly)
        refuse(tr("该文件没有画面"));
    return false;
}

void TaskRowWidget::missSource()
{
    if (m_kind.needsPicture && content().hindrance.isEmpty())
        refuse(tr("无法读取该文件"));
}

void TaskRowWidget::refuse(const QString &reason)
{
    task()->setEnabled(false);
    if (TaskBatch::isWaiting(*task()))
        emit taskOperationChange(TaskOperation::Pause);
    setShown(&RowContent::hindrance, reason);
}

void TaskRowWidget::applyEdited(const std::function<void()> &apply)
{
    const MediaTask *edited = task();
    const bool hasEnded = edited->state() == MediaTask::FINISHED;
    if (!hasEnded && !TaskBatch::isUnderWay(*edited)) {
        apply();
        return;
    }
    const QPointer<TaskRowWidget> alive(this);
    const QString question =
        hasEnded ? tr("该文件已按原来的设置转换完成。要按新的设置重新转换吗？")
                 : tr("该文件已按原来的设置开始转换。要停止并按新的设置重新转换吗？");
    if (!MediaMessageBox::ask(tr("提示"), question, this) || !alive || !task())
        return;
    apply();
    emit taskOperationChange(TaskOperation::Restart);
}

void TaskRowWidget::onTaskState(MediaTask::State state)
{
    if (!task())
        return;
    switch (state) {
    case MediaTask::START:
        showStarted();
        break;
    case MediaTask::PAUSED:
        m_workTimer.pause();
        setShown(&RowContent::paused, true);
        break;
    case MediaTask::RESUMED:
        showResumed();
        break;
    case MediaTask::STOPED:
        showEnded();
        break;
    case MediaTask::ERROR:
        showEnded();
        showFailed();
        break;
    case MediaTask::FINISHED:
        showFinished();
        break;
    case MediaTask::UNSTARTED:
    case MediaTask::RUNNING:
    case MediaTask::STOPING:
    case MediaTask::DESTORIED:
        break;
    }
}

void TaskRowWidget::onTaskProgress(double progress)
{
    m_progress = progress;
    const QString remaining = m_workTimer.remainingText(progress);
    if (!remaining.isEmpty())
        setShown(&RowContent::remainingText, remaining);
    showProgress(progress);
}

void TaskRowWidget::onTaskMessage(int type, MediaTask *sender, const QVariant &value)
{
    if (type == MediaTask::OutputMoved && qobject_cast<MediaMoveTask *>(sender) && task())
        onResultMoved(value.toString());
}

void TaskRowWidget::showStarted()
{
    m_workTimer.restart();
    showBegun();
    change([](RowContent &content) {
        content.remark.clear();
        content.nameReadOnly = true;
        content.paused = false;
        content.failed = false;
        content.editorEnabled = false;
    });
    OskDataTracker::instance().trackTableEvent(functionRecord(m_kind.function).startEvent);
}

void TaskRowWidget::showResumed()
{
    m_workTimer.resume();
    change([](RowContent &content) {
        content.paused = false;
        content.waiting = false;
    });
    showProgress(m_progress);
}

// A task that waited has left the queue, until it is resumed.
void TaskRowWidget::showHeld()
{
    change([](RowContent &content) {
        content.page = RowContent::WorkingPage;
        content.progressText = tr("已暂停");
        content.waiting = true;
        content.paused = true;
    });
}

void TaskRowWidget::showEnded()
{
    change([this](RowContent &content) {
        content.remainingText = tr("正在计算");
        content.progress = noProgress;
        content.waiting = false;
        content.page = RowContent::IdlePage;
        content.nameReadOnly = false;
        content.editorEnabled = editorAllowed();
    });
}

void TaskRowWidget::showFailed()
{
    const TaskFailure &failure = task()->failure();
    change([&](RowContent &content) {
        content.failed = true;
        content.failureTip = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
                                 .arg(failure.cause.toHtmlEscaped());
    });
    trackEnded(false);
}

void TaskRowWidget::showFinished()
{
    change([](RowContent &content) {
        content.editorEnabled = false;
        content.progress = fullBar;
    });
    QTimer::singleShot(fullBarShownMs, this, &TaskRowWidget::showDone);
}

void TaskRowWidget::showDone()
{
    // It may have been sent on its way once more.
    if (!task() || task()->state() != MediaTask::FINISHED || TaskBatch::isWaiting(*task()))
        return;
    const QString remark = task()->remarks().texts.join(tr("；"));
    change([&](RowContent &content) {
        content.progress = noProgress;
        content.page = RowContent::DonePage;
        content.remark = remark;
    });
    readResult();
    trackEvent(m_kind.function, QStringLiteral("video_convert_submit"));
    trackEnded(true);
    if (m_kind.form.playsResult)
        MediaPreviewWnd::addFinished(outputPath(),
                                     previewInfo(m_kind.function, QStringLiteral("自动")));
}

void TaskRowWidget::readResult()
{
    probe(outputPath(), [this](const MediaInfoData &info) {
        change([&](RowContent &content) { content.out.setFile(*info.format); });
        onResultProbed(info);
    });
}

void TaskRowWidget::trackEnded(bool success) const
{
    const QString reason = causeWithoutNames(task()->failure().cause, {sourcePath(), outputPath()});
    QVariantMap params{{QStringLiteral("is_convert_success"), success},
                       {QStringLiteral("input_format"), sourceSuffix()},
                       {QStringLiteral("output_format"), outputFormat()}};
    if (!success)
        params.insert(QStringLiteral("convert_fail_reason"), reason);
    trackEvent(m_kind.function, QStringLiteral("convert_success"), params);
    if (success || !m_kind.reportsFailures)
        return;
    OskDataTracker &tracker = OskDataTracker::instance();
    tracker.trackTableEvent(failedConversionEvent,
                            {{QStringLiteral("shurugeshi"), sourceSuffix()},
                             {QStringLiteral("shuchugeshi"), outputFormat()},
                             {QStringLiteral("user_id"), tracker.userId()},
                             {QStringLiteral("convert_fail_reason"), reason}});
}

void TaskRowWidget::on_btnDel_clicked()
{
    emit taskOperationChange(TaskOperation::Delete);
}

void TaskRowWidget::on_btnConvert_clicked()
{
    setShown(&RowContent::paused, false);
    emit taskOperationChange(TaskOperation::Start);
}

void TaskRowWidget::on_btnStop_clicked()
{
    const bool isHeld = content().waiting && content().paused;
    emit taskOperationChange(TaskOperation::Stop);
    if (isHeld && task())
        showEnded();
}

void TaskRowWidget::on_btnPause_toggled(bool checked)
{
    const bool waits = task() && TaskBatch::isWaiting(*task());
    emit taskOperationChange(checked ? TaskOperation::Pause : TaskOperation::Resume);
    if (checked && waits)
        showHeld();
}

void TaskRowWidget::on_btnOpenDir_clicked()
{
    emit taskOperationChange(TaskOperation::OpenFolder);
}

void TaskRowWidget::on_btnPlayDst_clicked()
{
    MediaPreviewWnd::showFile(outputPath(), previewInfo(m_kind.function, QStringLiteral("手动")));
}

void TaskRowWidget::on_btnErrorDetail_clicked()
{
    const MediaTask *told = task();
    if (!told)
        return;
    const TaskRemarks &remarks = told->remarks();
    runModal(remarks.isEmpty() ? new FailureDetailsDialog(told->failure(), this)
                               : new FailureDetailsDialog(remarks, this));
}
