// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"
#include "MediaKits/FunctionPage/VideoMerge/mergerowform.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/mediatexts.h"

MediaMergeListItemWidget::MediaMergeListItemWidget(QListWidgetItem *item, QWidget *parent)
    : MediaRowWidget(RowItem(item), parent)
{
    watchTask();
    probeSource();
    showSelection();
}

QSharedPointer<InputFileMediaParam> MediaMergeListItemWidget::inputOf(const RowItem &item)
{
    return item.data(MergeInputRole).value<QSharedPointer<InputFileMediaParam>>();
}

void MediaMergeListItemWidget::watchTask()
{
    const MediaTask *task = usingTask();
    connect(task, &MediaTask::taskOperateChanged, this, &MediaMergeListItemWidget::showOperate);
    connect(task, &MediaTask::taskProgress, this, &MediaMergeListItemWidget::showProgress);
    connect(task, &MediaTask::taskStateChanged, this, [this](MediaTask::State state) {
        if (state == MediaTask::START)
            showBegun();
        else if (MediaTask::isFinal(state))
            showOperate(MediaTask::OperateDequeued);
    });
    // A row that was moved may be made while the task is at work.
    if (TaskBatch::isUnderWay(*task))
        showBegun();
    else if (task->manager())
        showOperate(MediaTask::OperateQueued);
}

MediaTask *MediaMergeListItemWidget::usingTask() const
{
    return item().data(MergeTaskRole).value<QSharedPointer<MediaTask>>().data();
}

QWidget *MediaMergeListItemWidget::moveButton(ItemOperate operate) const
{
    return m_form ? m_form->moveButton(operate) : nullptr;
}

RowForm *MediaMergeListItemWidget::createForm()
{
    m_form = new MergeRowForm(isAudioFormat(sourceSuffix()), this);
    m_form->setPosition(m_position);
    connect(m_form, &MergeRowForm::upPressed, this, &MediaMergeListItemWidget::on_btnUp_clicked);
    connect(m_form, &MergeRowForm::downPressed, this,
            &MediaMergeListItemWidget::on_btnDown_clicked);
    connect(m_form, &MergeRowForm::cutPressed, this,
            &MediaMergeListItemWidget::on_btnCutSettting_clicked);
    return m_form;
}

void MediaMergeListItemWidget::setPosition(int position)
{
    if (m_position == position)
        return;
    m_position = position;
    if (m_form)
        m_form->setPosition(position);
}

void MediaMergeListItemWidget::keepSource(const QSharedPointer<MediaInfoData> &info)
{
    const auto input = inputOf(item());
    input->sourceInfo = info;
    input->durationMs = int(info->format->duration);
}

void MediaMergeListItemWidget::onSourceProbed(const MediaInfoData &info)
{
    change([&](RowContent &content) { content.in.detail = MediaFacts::sizeInPixels(info.video); });
    showSelection();
}

void MediaMergeListItemWidget::showSelection()
{
    const auto input = inputOf(item());
    const auto crop = input->cropRect;
    const auto span = input->timeRange;
    change([&](RowContent &content) {
        content.editorEnabled = !sourceInfo().isNull();
        content.out.detail = crop ? MediaFacts::sizeInPixels(crop->width, crop->height) : QString();
        content.out.duration =
            span ? QStringLiteral("%1-%2").arg(timeText(span->start), timeText(span->end))
                 : QString();
    });
    emit selectionChanged();
}

void MediaMergeListItemWidget::on_btnDel_clicked()
{
    emit itemDeleted();
}

void MediaMergeListItemWidget::on_btnUp_clicked()
{
    emit itemOperateActive(item().listItem(), MoveUp);
}

void MediaMergeListItemWidget::on_btnDown_clicked()
{
    emit itemOperateActive(item().listItem(), MoveDown);
}

void MediaMergeListItemWidget::on_btnCutSettting_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    const auto input = inputOf(item());
    const auto saved =
        VideoCutDialog::edit(sourcePath(), *info, {input->timeRange, input->cropRect}, this);
    if (!saved || item().isNull())
        return;
    input->timeRange = saved->timeRange;
    input->cropRect = saved->cropRect;
    showSelection();
}
