// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "MediaKits/Player/mediapreviewwnd.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <cmath>

namespace {

constexpr int fullBarShownMs = 100;
constexpr int fullBar = 100;
// A progress below this is none.
constexpr double smallestProgress = 1e-12;
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
    connect(form, &TaskRowForm::failurePressed, this, &TaskRowWidget::on_btnErrorDetail_clicked);
    connect(form, &TaskRowForm::nameEdited, this, &TaskRowWidget::renameOutput);
    connectForm(*form);
    return form;
}

MediaTask *TaskRowWidget::task() const
{
    return item().data(TaskRole).value<QSharedPointer<MediaTask>>().data();
}

ConvertTaskParam &TaskRowWidget::param() const
{
    return *static_cast<ConvertTaskParam *>(task()->param());
}

QString TaskRowWidget::outputPath() const
{
    if (!task())
        return {};
    const ConvertTaskParam &wanted = param();
    return QDir(wanted.outputDir)
        .filePath(wanted.outputName + QLatin1Char('.') + wanted.format.toLower());
}

void TaskRowWidget::setOutputDir(const QString &dir)
{
    param().outputDir = dir;
}

void TaskRowWidget::renameOutput(const QString &typed)
{
    if (!task())
        return;
    const QString name = outputNameFrom(typed, param().outputName);
    param().outputName = name;
    change([&](RowContent &content) { content.outputName = name; });
}

void TaskRowWidget::nameAfterSource()
{
    const QFileInfo file(sourcePath());
    param().inputFormat = file.suffix().toLower();
    if (param().outputName.isEmpty())
        param().outputName = file.completeBaseName();
    change([this](RowContent &content) { content.outputName = param().outputName; });
}

void TaskRowWidget::keepSource(const QSharedPointer<MediaInfoData> &info)
{
    param().sourceInfo = info;
    param().durationMs = int(info->format->duration);
    change([this](RowContent &content) {
        content.editorEnabled = TaskBatch::canStart(task()->state()) && editorAllowed();
    });
}

void TaskRowWidget::showCutLength()
{
    const auto range = param().timeRange;
    const int length = range ? range->end - range->start : param().durationMs;
    change([&](RowContent &content) { content.out.duration = timeText(length); });
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
        change([](RowContent &content) { content.paused = true; });
        break;
    case MediaTask::RESUMED:
        m_workTimer.resume();
        change([](RowContent &content) { content.paused = false; });
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
    if (std::abs(progress) > smallestProgress)
        change([&](RowContent &content) {
            content.remainingText = m_workTimer.remainingText(progress);
        });
    showProgress(progress);
}

void TaskRowWidget::onTaskMessage(int type, MediaTask *sender, const QVariant &value)
{
    if (type != MediaTask::OutputMoved || !qobject_cast<MediaMoveTask *>(sender) || !task())
        return;
    const QString name = QFileInfo(value.toString()).completeBaseName();
    param().outputName = name;
    change([&](RowContent &content) { content.outputName = name; });
}

void TaskRowWidget::showStarted()
{
    m_workTimer.restart();
    change([](RowContent &content) {
        content.progress = noProgress;
        content.page = RowContent::WorkingPage;
        content.nameReadOnly = true;
        content.paused = false;
        content.failed = false;
        content.editorEnabled = false;
    });
    OskDataTracker::instance().trackTableEvent(functionRecord(m_kind.function).startEvent);
}

void TaskRowWidget::showEnded()
{
    change([this](RowContent &content) {
        content.remainingText = tr("正在计算");
        content.progress = noProgress;
        content.page = RowContent::IdlePage;
        content.nameReadOnly = false;
        content.editorEnabled = editorAllowed();
    });
}

void TaskRowWidget::showFailed()
{
    const TaskFailure &failure = task()->failure();
    const QStringList lines = QStringList(failure.cause) + failure.report;
    change([&](RowContent &content) {
        content.failed = true;
        content.failureTip = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
                                 .arg(lines.join(QLatin1Char('\n')).toHtmlEscaped());
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
    if (!task())
        return;
    change([](RowContent &content) {
        content.progress = noProgress;
        content.page = RowContent::DonePage;
    });
    readResult();
    trackEvent(m_kind.function, QStringLiteral("video_convert_submit"));
    trackEnded(true);
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
    const ConvertTaskParam &wanted = param();
    const QString reason = task()->failure().cause;
    QVariantMap params{{QStringLiteral("is_convert_success"), success},
                       {QStringLiteral("input_format"), sourceSuffix()},
                       {QStringLiteral("output_format"), wanted.format}};
    if (!success)
        params.insert(QStringLiteral("convert_fail_reason"), reason);
    trackEvent(m_kind.function, QStringLiteral("convert_success"), params);
    if (success || !m_kind.reportsFailures)
        return;
    OskDataTracker &tracker = OskDataTracker::instance();
    tracker.trackTableEvent(failedConversionEvent,
                            {{QStringLiteral("shurugeshi"), sourceSuffix()},
                             {QStringLiteral("shuchugeshi"), wanted.format},
                             {QStringLiteral("user_id"), tracker.userId()},
                             {QStringLiteral("convert_fail_reason"), reason}});
}

void TaskRowWidget::on_btnDel_clicked()
{
    emit taskOperationChange(TaskOperation::Delete);
}

void TaskRowWidget::on_btnConvert_clicked()
{
    change([](RowContent &content) { content.paused = false; });
    emit taskOperationChange(TaskOperation::Start);
}

void TaskRowWidget::on_btnStop_clicked()
{
    emit taskOperationChange(TaskOperation::Stop);
}

void TaskRowWidget::on_btnPause_toggled(bool checked)
{
    emit taskOperationChange(checked ? TaskOperation::Pause : TaskOperation::Resume);
    // A task that only waits can't be paused: the button shows what is.
    if (task() && task()->operate() == MediaTask::OperateQueued)
        change([](RowContent &) {});
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
    if (const MediaTask *failed = task())
        FailureDetailsDialog(failed->failure(), this).exec();
}
