// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/taskrowwidget.h"

#include "controls/repolish.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/failuredetailsdialog.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "MediaKits/Player/thumbnail.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr int fullBarShownMs = 100;
constexpr int fullBar = 100;
constexpr int noProgress = -1;
// A progress below this is none.
constexpr double smallestProgress = 1e-12;
constexpr int failedConversionEvent = 50;
// Room for a picture in a row, in pixels.
constexpr QSize pictureFrame(144, 84);

// The numbered event of a start on a page.
int startEventOf(int page)
{
    return 12 + 2 * page;
}

} // namespace

TaskRowWidget::TaskRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : QWidget(parent), m_item(item), m_kind(kind)
{
    setFocusPolicy(Qt::StrongFocus);
    const QFileInfo file(sourcePath());
    m_content.inputName = file.fileName();
    setAccessibleName(m_content.inputName);
    m_content.in.format = file.suffix().toUpper();
    m_content.progressText = QStringLiteral("0.00");
    m_content.remainingText = tr("正在计算");
    watchTask();
}

void TaskRowWidget::watchTask()
{
    const MediaTask *watched = task();
    connect(watched, &MediaTask::taskStateChanged, this, &TaskRowWidget::onTaskState);
    connect(watched, &MediaTask::taskOperateChanged, this, &TaskRowWidget::onTaskOperate);
    connect(watched, &MediaTask::taskProgress, this, &TaskRowWidget::onTaskProgress);
    connect(watched, &MediaTask::taskCustomeMsgCome, this, &TaskRowWidget::onTaskMessage);
}

bool TaskRowWidget::setInSight(bool inSight)
{
    if (inSight && !m_form) {
        makeForm();
        return true;
    }
    if (!inSight && m_form && !m_form->isEditing() &&
        !m_form->isAncestorOf(QApplication::focusWidget())) {
        m_form->deleteLater();
        m_form = nullptr;
    }
    return false;
}

void TaskRowWidget::makeForm()
{
    m_form = new TaskRowForm(m_kind.form, isAudioFormat(sourceSuffix()), this);
    if (!layout()) {
        auto *whole = new QVBoxLayout(this);
        whole->setContentsMargins(0, 0, 0, 0);
    }
    layout()->addWidget(m_form);
    connect(m_form, &TaskRowForm::startPressed, this, &TaskRowWidget::on_btnConvert_clicked);
    connect(m_form, &TaskRowForm::stopPressed, this, &TaskRowWidget::on_btnStop_clicked);
    connect(m_form, &TaskRowForm::pauseToggled, this, &TaskRowWidget::on_btnPause_toggled);
    connect(m_form, &TaskRowForm::deletePressed, this, &TaskRowWidget::on_btnDel_clicked);
    connect(m_form, &TaskRowForm::playSourcePressed, this, &TaskRowWidget::on_btnPlaySrc_clicked);
    connect(m_form, &TaskRowForm::playResultPressed, this, &TaskRowWidget::on_btnPlayDst_clicked);
    connect(m_form, &TaskRowForm::revealPressed, this, &TaskRowWidget::on_btnOpenDir_clicked);
    connect(m_form, &TaskRowForm::failurePressed, this, &TaskRowWidget::on_btnErrorDetail_clicked);
    connect(m_form, &TaskRowForm::nameEdited, this, &TaskRowWidget::takeOutputName);
    connectForm(*m_form);
    m_form->showContent(m_content);
    m_form->show();
    tabIntoForm();
}

// Widgets that are made late come last in the window, behind those of all other rows.
void TaskRowWidget::tabIntoForm()
{
    QWidget *before = this;
    for (QWidget *widget : m_form->findChildren<QWidget *>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus))
            continue;
        setTabOrder(before, widget);
        before = widget;
    }
}

void TaskRowWidget::change(const std::function<void(RowContent &)> &changes)
{
    changes(m_content);
    if (m_form)
        m_form->showContent(m_content);
}

MediaTask *TaskRowWidget::task() const
{
    return m_item.data(TaskRole).value<QSharedPointer<MediaTask>>().data();
}

ConvertTaskParam &TaskRowWidget::param() const
{
    return *static_cast<ConvertTaskParam *>(task()->param());
}

QString TaskRowWidget::sourcePath() const
{
    return m_item.data(SourcePathRole).toString();
}

QString TaskRowWidget::sourceSuffix() const
{
    return QFileInfo(sourcePath()).suffix();
}

QSharedPointer<MediaInfoData> TaskRowWidget::sourceInfo() const
{
    return m_item.data(MediaInfoRole).value<QSharedPointer<MediaInfoData>>();
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

void TaskRowWidget::takeOutputName(const QString &typed)
{
    if (!task())
        return;
    // A name is one file's in the output folder, whatever is typed.
    QString name = typed;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    if (name.trimmed().isEmpty())
        name = param().outputName;
    param().outputName = name;
    change([&](RowContent &content) { content.outputName = name; });
}

void TaskRowWidget::probeSource()
{
    probe(sourcePath(), [this](const MediaInfoData &info) {
        change([&](RowContent &content) {
            content.in.takeFile(*info.format);
            content.out.duration = content.in.duration;
        });
        takeSource(info);
    });
    const QString suffix = sourceSuffix();
    if (!isVideoFormat(suffix) || suffix.toUpper() == QLatin1String("QLV"))
        return;
    requestThumbnail(sourcePath(), this, [this](const QPixmap &picture) {
        if (picture.isNull())
            return;
        change([&](RowContent &content) {
            const qreal ratio = devicePixelRatioF();
            content.picture =
                picture.scaled(pictureFrame * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            content.picture.setDevicePixelRatio(ratio);
        });
    });
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

void TaskRowWidget::onTaskOperate(MediaTask::Operate operate)
{
    if (operate == MediaTask::OperateQueued) {
        change([](RowContent &content) {
            content.progress = noProgress;
            content.progressText = QStringLiteral("0.00");
            content.page = RowContent::WorkingPage;
        });
    } else if (operate == MediaTask::OperateDequeued) {
        change([](RowContent &content) {
            content.progress = noProgress;
            content.page = RowContent::IdlePage;
        });
    }
}

void TaskRowWidget::onTaskProgress(double progress)
{
    change([&](RowContent &content) {
        if (std::abs(progress) > smallestProgress)
            content.remainingText = m_workTimer.remainingText(progress);
        const double percent = progress * 100;
        content.progress = int(percent);
        content.progressText = QStringLiteral("%1%").arg(percent, 0, 'f', 2);
    });
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
    OskDataTracker::instance().trackTableEvent(startEventOf(m_kind.page));
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
    probe(outputPath(), [this](const MediaInfoData &info) {
        change([&](RowContent &content) { content.out.takeFile(*info.format); });
        takeResult(info);
    });
    trackEvent(m_kind.page, QStringLiteral("video_convert_submit"));
    trackEnded(true);
    MediaPreviewWnd::addFinished(outputPath(), previewInfo(QStringLiteral("自动")));
}

QVariantMap TaskRowWidget::previewInfo(const QString &mode) const
{
    return {{QStringLiteral("event"), QStringLiteral("video_preview_view")},
            {QStringLiteral("track"), QVariantMap{{QStringLiteral("pageIndex"), m_kind.page},
                                                  {QStringLiteral("video_preview_mode"), mode}}}};
}

void TaskRowWidget::probe(const QString &path,
                          const std::function<void(const MediaInfoData &)> &take)
{
    MediaInfoBase *reader = createMediaInfo(QFileInfo(path).suffix().toUpper(), path, this);
    connect(reader, &MediaInfoBase::got, this, [this, reader, path, take] {
        const auto info = reader->mediaInfo();
        if (task() && info && info->format) {
            if (path == sourcePath()) {
                m_item.setData(MediaInfoRole, QVariant::fromValue(info));
                param().sourceInfo = info;
                param().durationMs = int(info->format->duration);
            }
            take(*info);
        }
        reader->deleteLater();
    });
    connect(reader, &MediaInfoBase::error, reader, &QObject::deleteLater);
    reader->start();
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
    trackEvent(m_kind.page, QStringLiteral("convert_success"), params);
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

void TaskRowWidget::on_btnPlaySrc_clicked()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(sourcePath()));
}

void TaskRowWidget::on_btnPlayDst_clicked()
{
    MediaPreviewWnd::showFile(outputPath(), previewInfo(QStringLiteral("手动")));
}

void TaskRowWidget::on_btnErrorDetail_clicked()
{
    if (const MediaTask *failed = task())
        FailureDetailsDialog(failed->failure(), this).exec();
}

bool TaskRowWidget::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
        setHovered(true);
        break;
    case QEvent::Leave:
        setHovered(false);
        break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        // The style of a child can't ask for a pseudo-state of its parent.
        setProperty("focused", hasFocus());
        repolish(this);
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void TaskRowWidget::setHovered(bool hovered)
{
    setProperty("mousestate", hovered ? QStringLiteral("hover") : QString());
    repolish(this);
}
