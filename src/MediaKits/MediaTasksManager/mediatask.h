// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediataskparam.h"

#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVariant>

#include <memory>

class MediaTasksManager;

/// Why a task ended in `ERROR`, for people.
struct TaskFailure
{
    /// One line that names the cause; a chain puts the file's name in front.
    QString cause;
    /// The last lines that the tool wrote, empty when no tool ran.
    QStringList report;
};

/// What is not quite as it was asked for in a result that is there, for people.
struct TaskRemarks
{
    QStringList texts;
    /// The last lines that the tool wrote, empty when there is nothing to remark.
    QStringList report;

    bool isEmpty() const { return texts.isEmpty(); }
    void append(const TaskRemarks &other)
    {
        texts += other.texts;
        if (!other.report.isEmpty())
            report = other.report;
    }
};

/// A piece of background work with a state machine, a progress and a handful of operations. All
/// of it lives on the main thread.
class MediaTask : public QObject
{
    Q_OBJECT

public:
    enum State {
        UNSTARTED = 0,
        START,
        RUNNING,
        STOPING,
        STOPED, ///< final
        PAUSED,
        RESUMED,
        FINISHED, ///< final
        ERROR,    ///< final
        DESTORIED,
    };
    Q_ENUM(State)

    /// A manager's view of the task.
    enum Operate {
        OperateNone = 0,
        OperateQueued,
        OperateDequeued,
        OperateDispatched,
    };
    Q_ENUM(Operate)

    /// Types of `taskCustomeMsgCome`.
    enum CustomMessage {
        /// The value is a string: the final path of the output file.
        OutputMoved = 1,
    };

    /// @param name kind of the task, for the log
    /// @param groupId key of the batch that the task was started with; empty for a single start
    MediaTask(const QString &name, const QString &groupId, QObject *parent = nullptr);
    explicit MediaTask(QObject *parent = nullptr);
    ~MediaTask() override;

    virtual void start() = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    virtual void resume() = 0;
    /// The parameter in use, owned by the task; null when there is none.
    virtual MediaTaskParam *param() const { return nullptr; }
    /// Takes over a parameter of the task's own type; null is ignored. A parameter of another type
    /// stays with the caller, and the log says so.
    virtual void setParam(MediaTaskParam *param);

    /// A task that isn't enabled is refused by every manager.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    /// While the returned object lives, every manager lets the task wait, since it has yet to be
    /// told something.
    std::shared_ptr<void> hold();
    bool isHeld() const { return !m_hold.expired(); }
    QString name() const { return m_name; }
    QString groupId() const { return m_groupId; }
    void setGroupId(const QString &groupId) { m_groupId = groupId; }
    State state() const { return m_state; }
    Operate operate() const { return m_operate; }
    /// The manager that holds the task, null when none does.
    MediaTasksManager *manager() const;

    /// Why the last run ended in `ERROR`; empty otherwise.
    const TaskFailure &failure() const { return m_failure; }
    /// What a listener to `FINISHED` should be told besides; empty when all is right.
    const TaskRemarks &remarks() const { return m_remarks; }

    static bool isFinal(State state)
    {
        return state == FINISHED || state == STOPED || state == ERROR;
    }

signals:
    void taskStateChanged(MediaTask::State s);
    void taskOperateChanged(MediaTask::Operate s);
    /// @param progress from 0 to 1
    void taskProgress(double progress);
    void taskCustomeMsgCome(int type, MediaTask *m, QVariant v);

public slots:
    /// Moves to another state where the rules of the state machine allow it: a final state can't
    /// be replaced by another, `STOPING` needs work under way, and what ends while stopping or
    /// paused counts as `STOPED`.
    void setState(MediaTask::State s);

protected slots:
    void setOperate(MediaTask::Operate o);

protected:
    /// `setState`, after which a listener may have deleted the task.
    /// @return whether it is still there
    [[nodiscard]] bool enter(State s);
    /// Keeps the failure, writes its cause to the log and moves to `ERROR`.
    void fail(const TaskFailure &failure);
    void fail(const QString &cause) { fail(TaskFailure{cause, {}}); }
    /// Keeps another task's failure as this one's own, without a second log line.
    void keepFailure(const TaskFailure &failure) { m_failure = failure; }
    /// Keeps remarks behind those that are there; for calling ahead of `FINISHED`.
    void addRemarks(const TaskRemarks &remarks) { m_remarks.append(remarks); }
    /// `fail` with the message for a task that was told nothing.
    void failWithoutParam();
    /// Tells the log that `setParam` got a parameter of another task.
    void refuseParam() const;

private:
    friend class MediaTasksManager;

    State allowedState(State wanted) const;

    bool m_enabled = true;
    std::weak_ptr<void> m_hold;
    QString m_name;
    QString m_groupId;
    State m_state = UNSTARTED;
    Operate m_operate = OperateNone;
    QPointer<MediaTasksManager> m_manager;
    TaskFailure m_failure;
    TaskRemarks m_remarks;
};

Q_DECLARE_METATYPE(QSharedPointer<MediaTask>)
