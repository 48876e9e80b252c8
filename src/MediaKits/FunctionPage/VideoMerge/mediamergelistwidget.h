// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowsview.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "MediaKits/MediaTasksManager/concattask.h"

class RowList;

/// The inputs of a merge in their order, and the one task that joins them.
class MediaMergeListWidget : public RowsView
{
    Q_OBJECT

public:
    using TaskState = TaskGrpState;
    explicit MediaMergeListWidget(QWidget *parent = nullptr);
    ~MediaMergeListWidget() override;

    /// Stops a merge, if the user agrees.
    void addFiles(const QStringList &files) override;
    void addFile(const QString &path) override;
    void clear() override;
    bool isWorking() const override;
    void setEncParamInfoID(quint32 id) override;
    void setOutPath(const QString &path) override;
    /// Base name of the result; an empty one stands for the default.
    void setOutName(const QString &name);
    static QString defaultName();
    /// Size of the first input's picture, for presets that have none; empty while it isn't known.
    QSize firstSize() const;
    /// Size of the result's picture; empty when there will be none.
    QSize resultSize() const;

    /// Starts the merge. One that runs is stopped, if the user agrees, one that waits goes on
    /// waiting.
    void merge();
    void convertAll(const QString &) override { merge(); }

signals:
    void taskStateChanged(MediaMergeListWidget::TaskState state);
    void resultSizeChanged();

protected:
    MediaFunction function() const override { return MediaFunction::Merge; }

private:
    void watchTask();
    void onTaskState(MediaTask::State state);
    void onEnded(MediaTask::State state);
    void finish();
    void trackEnded(bool success) const;
    void stop();
    bool mayStop(const QString &question);
    void addRow(QListWidgetItem *item);
    void deleteRow(MediaMergeListItemWidget *row);
    void move(QListWidgetItem *item, MediaMergeListItemWidget::ItemOperate operate);
    static void focusMove(MediaMergeListItemWidget *row,
                          MediaMergeListItemWidget::ItemOperate operate);
    void keepInHand(MediaMergeListItemWidget *row, MediaMergeListItemWidget::ItemOperate operate,
                    const QPoint &pressedAt);
    void renumber();
    ConcatTaskParam &param() const;
    QList<QSharedPointer<InputFileMediaParam>> inputs() const;

    TaskBatch m_batch;
    QSharedPointer<MediaTask> m_task;
    RowList *m_list;
    bool m_isWatched = false; // by the batch, which ticks from then on
    QString m_result;         ///< path of the last finished merge
};
