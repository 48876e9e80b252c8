// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistwidget.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowlist.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefinishtipsdialog.h"
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "MediaKits/MediaTasksManager/mergepreset.h"
#include "MediaKits/Player/mediapreviewwnd.h"

#include <QApplication>
#include <QFileInfo>
#include <QPointer>
#include <QScrollBar>
#include <QVariant>
#include <QVBoxLayout>

namespace {

constexpr int fewestInputs = 2;
constexpr QPoint nowhere(-1, -1);

QPoint pointerIn(const QWidget *button)
{
    const QPoint at = button ? button->mapFromGlobal(QCursor::pos()) : nowhere;
    return button && button->rect().contains(at) ? at : nowhere;
}

} // namespace

MediaMergeListWidget::MediaMergeListWidget(QWidget *parent)
    : RowsView(parent), m_task(createGroupTask(ConcatKind)), m_list(new RowList)
{
    qRegisterMetaType<MediaMergeListItemWidget::ItemOperate>(
        "MediaMergeListItemWidget::ItemOperate");
    m_task->setParam(new ConcatTaskParam);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    connect(this, &MediaMergeListWidget::taskStateChanged, this,
            [this](TaskState state) { emit taskGrpStateChanged(defaultName(), state); });
    watchTask();
}

MediaMergeListWidget::~MediaMergeListWidget()
{
    // While all that the task's last signals could reach still lives.
    m_task->disconnect(this);
    stop();
    m_list->clearRows();
}

QString MediaMergeListWidget::defaultName()
{
    return tr("合并视频");
}

ConcatTaskParam &MediaMergeListWidget::param() const
{
    return *static_cast<ConcatTaskParam *>(m_task->param());
}

void MediaMergeListWidget::watchTask()
{
    connect(&m_batch, &TaskBatch::groupStateChanged, this,
            [this](const QString &, TaskState state) { emit taskStateChanged(state); });
    connect(m_task.data(), &MediaTask::taskStateChanged, this, &MediaMergeListWidget::onTaskState);
    connect(m_task.data(), &MediaTask::taskCustomeMsgCome, this,
            [this](int type, MediaTask *sender, const QVariant &value) {
                if (type != MediaTask::OutputMoved || !qobject_cast<MediaMoveTask *>(sender))
                    return;
                m_result = value.toString();
                param().outputName = QFileInfo(m_result).completeBaseName();
            });
}

void MediaMergeListWidget::onTaskState(MediaTask::State state)
{
    if (state == MediaTask::START)
        OskDataTracker::instance().trackTableEvent(functionRecord(function()).startEvent);
    // What follows may open a window, after all others have heard of the end.
    else if (MediaTask::isFinal(state))
        QMetaObject::invokeMethod(
            this, [this, state] { onEnded(state); }, Qt::QueuedConnection);
}

void MediaMergeListWidget::onEnded(MediaTask::State state)
{
    if (state == MediaTask::FINISHED) {
        finish();
    } else if (state == MediaTask::ERROR) {
        trackEnded(false);
        MediaMessageBox::showFailure(tr("合并失败"), m_task->failure(), this);
    }
}

void MediaMergeListWidget::finish()
{
    renumber();
    addHistory(defaultName(), m_result);
    trackEvent(function(), QStringLiteral("video_convert_submit"));
    trackEnded(true);
    MediaPreviewWnd::addFinished(m_result,
                                 MediaRowWidget::previewInfo(function(), QStringLiteral("自动")));
    auto *tips = new MediaMergeFinishTipsDialog(m_result, m_task->remarks(), this);
    tips->setAttribute(Qt::WA_DeleteOnClose);
    tips->open();
}

void MediaMergeListWidget::trackEnded(bool success) const
{
    QVariantMap params{{QStringLiteral("is_convert_success"), success},
                       {QStringLiteral("output_format"), param().format}};
    if (!success)
        params.insert(QStringLiteral("convert_fail_reason"),
                      causeWithoutNames(m_task->failure().cause, {}));
    trackEvent(function(), QStringLiteral("convert_success"), params);
}

void MediaMergeListWidget::setEncParamInfoID(quint32 id)
{
    RowsView::setEncParamInfoID(id);
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    const auto preset = catalogue.encParam(id);
    if (!preset)
        return;
    param().encParam = preset;
    param().format = catalogue.suffixOf(*preset);
    emit resultSizeChanged();
}

void MediaMergeListWidget::setOutPath(const QString &path)
{
    RowsView::setOutPath(path);
    param().outputDir = path;
}

void MediaMergeListWidget::setOutName(const QString &name)
{
    QString fileName = name.trimmed().isEmpty() ? defaultName() : name;
    // A name is one file's in the output folder, whatever is typed.
    param().outputName = fileName.replace(QLatin1Char('/'), QLatin1Char('_'));
}

QList<QSharedPointer<InputFileMediaParam>> MediaMergeListWidget::inputs() const
{
    QList<QSharedPointer<InputFileMediaParam>> inputs;
    for (const MediaRowWidget *row : m_list->rows())
        inputs += MediaMergeListItemWidget::inputOf(row->item());
    return inputs;
}

QSize MediaMergeListWidget::firstSize() const
{
    return firstPictureSize(inputs());
}

QSize MediaMergeListWidget::resultSize() const
{
    ConcatTaskParam wanted = param();
    wanted.files = inputs();
    if (!wanted.encParam || !mergeHasPicture(wanted))
        return {};
    const auto video = mergePreset(wanted)->video;
    return {video->width / 2 * 2, video->height / 2 * 2};
}

void MediaMergeListWidget::stop()
{
    m_batch.stop(m_task.data());
}

bool MediaMergeListWidget::isWorking() const
{
    return TaskBatch::isUnderWay(*m_task) || TaskBatch::isWaiting(*m_task);
}

// False also when the list has gone meanwhile.
bool MediaMergeListWidget::mayStop(const QString &question)
{
    if (!TaskBatch::isUnderWay(*m_task))
        return true;
    const QPointer<MediaMergeListWidget> alive(this);
    return MediaMessageBox::ask(tr("提示"), question, this) && alive;
}

void MediaMergeListWidget::merge()
{
    if (TaskBatch::isUnderWay(*m_task)) {
        if (mayStop(tr("正在合并，确定停止吗？")))
            stop();
        return;
    }
    trackEvent(function(), QStringLiteral("video_convert_start"));
    m_task->stop();
    if (m_list->count() < fewestInputs) {
        MediaMessageBox::showMessage(tr("提示"), tr("至少需要两个视频才可以合并"), this);
        return;
    }
    if (m_task->state() == MediaTask::RUNNING || presetIsMissing())
        return;
    param().files = inputs();
    m_batch.startAll(defaultName(), {m_task.data()});
}

void MediaMergeListWidget::addFiles(const QStringList &files)
{
    if (!mayStop(tr("添加文件会停止正在进行的合并，确定添加吗？")))
        return;
    stop();
    RowsView::addFiles(files);
}

void MediaMergeListWidget::addFile(const QString &path)
{
    QListWidgetItem *item = m_list->addPath(path);
    const auto input = QSharedPointer<InputFileMediaParam>::create();
    input->file = path;
    input->format = QFileInfo(path).suffix().toUpper();
    item->setData(MergeInputRole, QVariant::fromValue(input));
    item->setData(MergeTaskRole, QVariant::fromValue(m_task));
    addRow(item);
    renumber();
    if (m_list->count() > 1)
        return;
    if (!m_isWatched)
        m_batch.watch(m_task.data());
    m_isWatched = true;
    emit mediaListEmptyChanged(false);
}

void MediaMergeListWidget::addRow(QListWidgetItem *item)
{
    auto *row = new MediaMergeListItemWidget(item, this);
    const QPointer<MediaMergeListItemWidget> alive(row);
    connect(row, &MediaMergeListItemWidget::itemDeleted, this, [this, alive] {
        if (!mayStop(tr("删除文件会停止正在进行的合并，确定删除吗？")) || !alive)
            return;
        stop();
        deleteRow(alive);
    });
    using Operate = MediaMergeListItemWidget::ItemOperate;
    connect(row, &MediaMergeListItemWidget::itemOperateActive, this,
            [this, alive](QListWidgetItem *moved, Operate operate) {
                if (!mayStop(tr("移动文件会停止正在进行的合并，确定移动吗？")) || !alive)
                    return;
                if (isWorking())
                    stop();
                move(moved, operate);
            });
    connect(row, &MediaMergeListItemWidget::selectionChanged, this,
            &MediaMergeListWidget::resultSizeChanged);
    m_list->showRow(row);
}

void MediaMergeListWidget::deleteRow(MediaMergeListItemWidget *row)
{
    m_list->deleteRow(row);
    renumber();
    if (m_list->count() == 0)
        emit mediaListEmptyChanged(true);
}

void MediaMergeListWidget::clear()
{
    stop();
    if (m_list->count() == 0)
        return;
    m_list->clearRows();
    emit resultSizeChanged();
    emit mediaListEmptyChanged(true);
}

void MediaMergeListWidget::move(QListWidgetItem *item,
                                MediaMergeListItemWidget::ItemOperate operate)
{
    const int from = m_list->row(item);
    const int to = operate == MediaMergeListItemWidget::MoveUp ? from - 1 : from + 1;
    if (from < 0 || to < 0 || to >= m_list->count())
        return;
    auto *old = static_cast<MediaMergeListItemWidget *>(m_list->rowOf(item));
    const bool hadFocus = old->isAncestorOf(QApplication::focusWidget());
    const QPoint pressedAt = pointerIn(old->moveButton(operate));
    m_list->takeItemOf(old);
    m_list->insertItem(to, item);
    addRow(item);
    renumber();
    m_list->scrollToItem(item);
    auto *row = static_cast<MediaMergeListItemWidget *>(m_list->rowOf(item));
    row->setInSight(true);
    if (hadFocus)
        focusMove(row, operate);
    keepInHand(row, operate, pressedAt);
}

void MediaMergeListWidget::focusMove(MediaMergeListItemWidget *row,
                                     MediaMergeListItemWidget::ItemOperate operate)
{
    using Row = MediaMergeListItemWidget;
    QWidget *button = row->moveButton(operate);
    if (!button)
        button = row->moveButton(operate == Row::MoveUp ? Row::MoveDown : Row::MoveUp);
    (button ? button : row)->setFocus(Qt::OtherFocusReason);
}

// Pressed again and again, the button moves the row on and on: the list follows as far as it can
// be scrolled, the pointer the rest of the way.
void MediaMergeListWidget::keepInHand(MediaMergeListItemWidget *row,
                                      MediaMergeListItemWidget::ItemOperate operate,
                                      const QPoint &pressedAt)
{
    const QWidget *button = row->moveButton(operate);
    if (!button || pressedAt == nowhere)
        return;
    m_list->doItemsLayout();
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QScrollBar *bar = m_list->verticalScrollBar();
    bar->setValue(bar->value() + button->mapToGlobal(pressedAt).y() - QCursor::pos().y());
    QCursor::setPos(button->mapToGlobal(pressedAt));
}

void MediaMergeListWidget::renumber()
{
    const QVector<MediaRowWidget *> rows = m_list->rows();
    const int last = rows.size() - 1;
    for (int i = 0; i <= last; ++i) {
        int position = MediaMergeListItemWidget::MiddlePosition;
        if (last == 0)
            position = MediaMergeListItemWidget::OnlyPosition;
        else if (i == 0)
            position = MediaMergeListItemWidget::FirstPosition;
        else if (i == last)
            position = MediaMergeListItemWidget::LastPosition;
        static_cast<MediaMergeListItemWidget *>(rows[i])->setPosition(position);
    }
    emit resultSizeChanged();
}
