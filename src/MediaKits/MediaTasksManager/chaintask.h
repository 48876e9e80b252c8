// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/filealiases.h"
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"

/// Base of the tasks that run a chain of steps as one task. The chain is built anew at each start,
/// so that a task can be started again after any final state; the task's state follows the chain's.
/// Each result is checked before it is moved into place: `FINISHED` means that nothing was found
/// wrong with it but what `remarks` tell.
class ChainTask : public MediaTask
{
    Q_OBJECT

public:
    using MediaTask::MediaTask;
    ~ChainTask() override;

    void pause() override;
    void stop() override;
    void resume() override;

protected:
    void run();
    /// Why the chain need not begin, in words for the user; empty when it may.
    virtual QString problem() const = 0;
    /// The chain for the present parameter, without a parent.
    virtual GroupMediaTask *buildGroup() = 0;
    /// The name that a failure is told with.
    virtual QString subject() const = 0;

    /// Plain names for files whose own a tool would misread; for `buildGroup`, which begins with
    /// none. They last until the next start.
    FileAliases &aliases() { return m_aliases; }
    /// A path for a new work folder inside the marker directory of an output folder. The folder
    /// itself is made by the chain's first step.
    QString newWorkDir(const QString &outputDir);
    /// Where a result is wanted; an empty folder stands for the current one.
    static QString outputPath(const QString &dir, const QString &name, const QString &format);

    // The steps around the work of every chain.
    MediaTask *createStep(const QString &workDir);
    static MediaTask *moveStep(const QString &from, const QString &to,
                               const MediaMoveTask::Check &check, const QStringList &parts = {});
    static MediaTask *deleteStep(const QString &workDir);

    /// Whether somebody has moved or removed the output folder since the work folder was made.
    bool isOutputGone() const;
    /// Why nothing can be put at this path, in words for the user; empty when nothing is known.
    static QString outputProblem(const QString &path);

private:
    void onGroupState(State groupState);
    TaskFailure groupFailure() const;
    void failAbout(const TaskFailure &failure);

    FileAliases m_aliases;
    QString m_marker;                  ///< path of the directory around the work folder
    bool m_hasWorkDir = false;         ///< the chain has made its work folder
    GroupMediaTask *m_group = nullptr; ///< owned, goes by `deleteLater`
};
