// SPDX-License-Identifier: MIT
#pragma once

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowsview.h"
#include "MediaKits/FunctionPage/Framework/Tree/itemoperation.h"
#include "MediaKits/FunctionPage/Framework/Tree/rowtree.h"
#include "MediaKits/FunctionPage/Framework/Tree/sourcerowwidget.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QPointer>

/// Base of the trees: a row for each source, and below it one for each fragment that was marked in
/// it, each with a task of its own.
class TaskTreeWidget : public TaskRowsView
{
    Q_OBJECT

public:
    explicit TaskTreeWidget(QWidget *parent = nullptr);
    ~TaskTreeWidget() override;

    void addFile(const QString &path) override;
    void clear() override;
    QString startHindrance() const override;

signals:
    void mediaTreeEmptyChanged(bool empty);

protected:
    virtual SourceRowWidget *createSourceRow(QTreeWidgetItem *item) = 0;
    virtual TaskRowWidget *createFragmentRow(QTreeWidgetItem *item) = 0;
    /// Lets the user mark fragments in a source that was probed, and makes a row of each.
    virtual void markFragments(SourceRowWidget *source) = 0;

    /// Runs an editor of fragments on a source.
    /// @param setUp of the editor, ahead of its run
    /// @return none when the user cancelled, or the source went meanwhile
    template<class Dialog>
    static auto mark(
        SourceRowWidget *source, const std::function<void(Dialog &)> &setUp = [](Dialog &) {})
    {
        auto *dialog = new Dialog(source);
        setUp(*dialog);
        dialog->showMedium(source->sourcePath(), *source->sourceInfo());
        const auto marked = runModal(dialog, [](const Dialog &saved) { return saved.fragments(); });
        using Fragments = decltype(dialog->fragments());
        return marked && !source->item().isNull() ? *marked : Fragments();
    }
    /// Appends a row for a fragment.
    /// @param fill completes its conversion, which has source and folder
    void addFragment(SourceRowWidget *source, const std::function<void(ConvertTaskParam &)> &fill);

    QVector<TaskRowWidget *> rows() const override;
    void deleteRow(TaskRowWidget *row) override;
    bool isEmpty() const override;

private:
    void operateSource(QTreeWidgetItem *item, ItemOperation operation);
    void addFragments(SourceRowWidget *source);
    void askAndRemove(SourceRowWidget *source);
    SourceRowWidget *sourceRow(QTreeWidgetItem *item) const;
    QVector<TaskRowWidget *> fragmentsOf(const SourceRowWidget *source) const;

    RowTree *m_tree;
};
