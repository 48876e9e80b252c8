// SPDX-License-Identifier: MIT
#pragma once

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskoperation.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowform.h"
#include "MediaKits/FunctionPage/Framework/Rows/worktimer.h"

#include <utility>

/// Base of the rows that show one task, which is data of the row's item, too. What the task is told
/// is the subclass's to know.
class TaskRowWidget : public MediaRowWidget
{
    Q_OBJECT

public:
    using Slot = void (TaskRowWidget::*)();

    struct Kind
    {
        MediaFunction function = MediaFunction::Home;
        /// Whether the numbered events hear of failures and their reason.
        bool reportsFailures = false;
        TaskRowForm::Kind form;
        /// Whether a source without a picture is refused.
        bool needsPicture = false;
        /// Opens the row's editor: a slot of the subclass; null for none.
        Slot openEditor = nullptr;
    };

    /// @param item holds path and task already
    TaskRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

    /// Null when the item is gone.
    MediaTask *task() const;

    /// Where the result goes or has gone, the first of several; empty when the item is gone.
    virtual QString outputPath() const = 0;
    virtual void setOutputDir(const QString &dir) = 0;
    /// The preset by its id; rows of a page without presets ignore it.
    virtual void setEncParamInfoID(quint32) {}
    virtual quint32 encParamInfoID() const { return 0; }
    /// Takes the picture of the source that the row belongs to.
    virtual void adoptPicture(const QPixmap &picture) { setPicture(picture); }
    /// Takes over what was chosen in the editor of another row of the same page.
    virtual void adoptEdited(const TaskRowWidget & /*edited*/) {}

signals:
    void taskOperationChange(TaskOperation operation);
    /// What was chosen in this row's editor is to hold for all rows.
    void editedForAll();

public slots:
    void on_btnDel_clicked() override;
    void on_btnConvert_clicked();
    void on_btnStop_clicked();
    void on_btnOpenDir_clicked();
    void on_btnPause_toggled(bool checked);
    void on_btnPlayDst_clicked();
    void on_btnErrorDetail_clicked();

protected:
    /// The result's name without folder and suffix, as the task is told.
    virtual QString outputName() const = 0;
    virtual void setOutputName(const QString &name) = 0;
    /// The result's format, for statistics.
    virtual QString outputFormat() const = 0;
    /// The task has put a file in its place.
    virtual void onResultMoved(const QString &) {}
    /// Tells of the finished file, by a probe of it.
    virtual void readResult();
    /// Takes what that probe has found.
    virtual void onResultProbed(const MediaInfoData &) {}
    /// Whether the row's editor may be opened for this source, which has to be known for it.
    virtual bool editorAllowed() const { return !sourceInfo().isNull(); }
    /// Lets what was chosen in an editor take effect. A task that has begun or ended meanwhile goes
    /// by what it was told: the user is asked whether it is to run again.
    void applyEdited(const std::function<void()> &apply);
    /// Runs an editor that was set up for the row, and deletes it.
    /// @param result makes of the saved editor what `apply` lets take effect, in all rows if the
    /// user wants it so
    template<class Editor, class Result, class Apply>
    void edit(Editor *editor, Result result, Apply apply)
    {
        const auto saved = runModal(editor, [&](const Editor &edited) {
            return std::make_pair(result(edited), edited.isForAll());
        });
        if (!saved || !task())
            return;
        applyEdited([&] {
            apply(saved->first);
            if (saved->second)
                emit editedForAll();
        });
    }
    /// Gives the result a name, in the row too.
    void renameResult(const QString &name);
    /// For the subclass's own buttons.
    virtual void connectForm(TaskRowForm &) {}

    const TaskRowForm::Kind &formKind() const { return m_kind.form; }
    RowForm *createForm() override;
    MediaTask *usingTask() const override { return task(); }
    /// To be called by overrides.
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;
    bool acceptsSource(const MediaInfoBase &reader) override;
    void missSource() override;

private:
    void watchTask();
    void refuse(const QString &reason);
    void onTaskState(MediaTask::State state);
    void onTaskProgress(double progress);
    void onTaskMessage(int type, MediaTask *sender, const QVariant &value);
    void showStarted();
    void showResumed();
    void showHeld();
    void showEnded();
    void showFailed();
    void showFinished();
    void showDone();
    void trackEnded(bool success) const;

    const Kind m_kind;
    WorkTimer m_workTimer;
    double m_progress = 0.0;
};
