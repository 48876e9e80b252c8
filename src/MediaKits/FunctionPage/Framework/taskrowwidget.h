// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/rowcontent.h"
#include "MediaKits/FunctionPage/Framework/rowitem.h"
#include "MediaKits/FunctionPage/Framework/taskoperation.h"
#include "MediaKits/FunctionPage/Framework/taskrowform.h"
#include "MediaKits/FunctionPage/Framework/worktimer.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <QVariantMap>
#include <QWidget>

#include <functional>

/// Base of the rows that show one task. Path, task and probe result are data of the row's item;
/// what the row shows is a `RowContent`, and the widgets that show it exist only while the row is
/// in sight, so that a list may have a thousand rows.
class TaskRowWidget : public QWidget
{
    Q_OBJECT

public:
    struct Kind
    {
        /// Number of the page in usage tracking.
        int page;
        /// Whether the numbered events hear of failures and their reason.
        bool reportsFailures;
        TaskRowForm::Kind form;
    };

    /// @param item holds path and task already
    TaskRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

    /// Null when the item is gone.
    MediaTask *task() const;
    QString sourcePath() const;
    /// Null until probed.
    QSharedPointer<MediaInfoData> sourceInfo() const;
    const RowItem &item() const { return m_item; }
    /// Forgets the item, ahead of its deletion.
    void clearItem() { m_item.clear(); }

    /// Where the result goes or has gone; empty when the item is gone.
    virtual QString outputPath() const;
    void setOutputDir(const QString &dir);
    /// The preset by its id; rows of a page without presets ignore it.
    virtual void setEncParamInfoID(quint32) {}
    virtual quint32 encParamInfoID() const { return 0; }

    /// Makes the row's widgets when it comes in sight, and lets go of them when it is out of it,
    /// unless a name is being typed there. Tells whether widgets were made.
    bool setInSight(bool inSight);
    const RowContent &content() const { return m_content; }

signals:
    void taskOperationChange(TaskOperation operation);

public slots:
    void on_btnDel_clicked();
    void on_btnConvert_clicked();
    void on_btnStop_clicked();
    void on_btnOpenDir_clicked();
    void on_btnPause_toggled(bool checked);
    void on_btnPlaySrc_clicked();
    void on_btnPlayDst_clicked();
    void on_btnErrorDetail_clicked();

protected:
    /// Starts the probe of the source and asks for its picture; for the constructor of a row whose
    /// item has neither.
    void probeSource();
    /// Takes what the probe of the source has found, beyond its length and size.
    virtual void takeSource(const MediaInfoData &info) = 0;
    /// The same for the finished file.
    virtual void takeResult(const MediaInfoData &info) = 0;
    /// Whether the row's editor may be opened for this source.
    virtual bool editorAllowed() const { return true; }
    /// For the subclass's own buttons.
    virtual void connectForm(TaskRowForm &) {}

    /// The parameter of the row's task, for the rows whose task is a conversion.
    ConvertTaskParam &param() const;
    QString sourceSuffix() const;
    /// Changes what is shown.
    void change(const std::function<void(RowContent &)> &changes);

    bool event(QEvent *event) override;

private:
    void watchTask();
    void makeForm();
    void tabIntoForm();
    void onTaskState(MediaTask::State state);
    void onTaskOperate(MediaTask::Operate operate);
    void onTaskProgress(double progress);
    void onTaskMessage(int type, MediaTask *sender, const QVariant &value);
    void showStarted();
    void showEnded();
    void showFailed();
    void showFinished();
    void showDone();
    void takeOutputName(const QString &typed);
    void trackEnded(bool success) const;
    /// @param mode "手动" or "自动"
    QVariantMap previewInfo(const QString &mode) const;
    void setHovered(bool hovered);
    void probe(const QString &path, const std::function<void(const MediaInfoData &)> &take);

    RowItem m_item;
    const Kind m_kind;
    RowContent m_content;
    TaskRowForm *m_form = nullptr;
    WorkTimer m_workTimer;
};
