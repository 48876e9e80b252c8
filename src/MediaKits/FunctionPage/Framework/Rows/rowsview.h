// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"

#include <QStringList>
#include <QWidget>

/// Base of what a page shows its files in: their intake, the page-wide choices and the start.
class RowsView : public QWidget
{
    Q_OBJECT

public:
    using TaskGrpState = TaskBatch::GroupState;

    explicit RowsView(QWidget *parent = nullptr);

    /// Adds a row for each file, with a dialog that shows how far this is and can end it.
    virtual void addFiles(const QStringList &files);
    virtual void addFile(const QString &path) = 0;
    /// Deletes every row; what runs is stopped.
    virtual void clear() = 0;

    /// The preset by its id; 0 stands for none.
    virtual void setEncParamInfoID(quint32 id) { m_encParamInfoID = id; }
    quint32 encParamInfoID() const { return m_encParamInfoID; }
    /// The folder of the results.
    virtual void setOutPath(const QString &path) { m_outPath = path; }
    QString outPath() const { return m_outPath; }

    /// Whether something is at work or waits for its turn.
    virtual bool isWorking() const = 0;
    /// What the user has to do before there is something to start; empty when there is.
    virtual QString startHindrance() const { return {}; }
    /// Starts what can be started.
    /// @param groupName any text but an empty one
    virtual void convertAll(const QString &groupName) = 0;

signals:
    void mediaListEmptyChanged(bool empty);
    void taskGrpStateChanged(const QString &taskGrpName, RowsView::TaskGrpState state);

protected:
    virtual MediaFunction function() const = 0;
    /// Whether a start needs a chosen preset.
    virtual bool needsPreset() const { return true; }
    /// Tells the user, too.
    bool presetIsMissing();
    /// @param source a file, or what the result was made from
    static void addHistory(const QString &source, const QString &result);

private:
    void deleteFocusedRow();

    quint32 m_encParamInfoID = 0;
    QString m_outPath;
};
