// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"
#include "support/utf8.h"

#include <QSignalSpy>
#include <QTimer>

/// The letters of the states, in the order of their numbers.
inline const QString stateLetters = "USRgDPMFEX"_s;

inline MediaTask::State stateOf(QChar letter)
{
    return MediaTask::State(stateLetters.indexOf(letter));
}

/// What a listener was told, as letters.
inline QString statesSeen(const QSignalSpy &spy)
{
    QString seen;
    for (const QList<QVariant> &arguments : spy)
        seen += stateLetters[arguments.first().value<MediaTask::State>()];
    return seen;
}

/// A task without work: it writes its starts ("a") and stops ("a!") to a shared journal and moves
/// through the states as a tool would.
class FakeTask : public MediaTask
{
    Q_OBJECT

public:
    enum Plan {
        Waits,    ///< reaches `RUNNING` a moment later and goes on until it is driven on
        Finishes, ///< done inside `start`
        Fails,    ///< failed inside `start`
    };

    FakeTask(QChar name, QString *journal, Plan plan = Waits)
        : MediaTask(name, QString()), m_plan(plan), m_journal(journal)
    {
    }

    void start() override
    {
        *m_journal += name();
        setState(START);
        if (m_plan == Waits) {
            QTimer::singleShot(0, this, [this] {
                if (state() == START)
                    setState(RUNNING);
            });
            return;
        }
        setState(RUNNING);
        if (m_plan == Fails)
            failAs(name() + " failed"_s);
        else
            setState(FINISHED);
    }

    void pause() override { setState(PAUSED); }
    void resume() override { setState(RESUMED); }

    void stop() override
    {
        if (isFinal(state()))
            return;
        *m_journal += name() + u'!';
        setState(STOPING);
        // A tool that is killed while it starts up can't have been `STOPING`.
        setState(FINISHED);
    }

    void failAs(const QString &cause) { fail({cause, {}}); }
    void setPlan(Plan plan) { m_plan = plan; }

private:
    Plan m_plan;
    QString *m_journal;
};
