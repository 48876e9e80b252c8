// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/mediaprocessor.h"
#include "MediaKits/MediaProcessor/reporttail.h"
#include "platform/childprocess.h"

#include <QMap>

/// Where a tool that works on files becomes a child process: what all runners share around their
/// `QProcess`. The child dies with the program, however the program ends.
class ToolProcessor : public MediaProcessor
{
    Q_OBJECT

public:
    explicit ToolProcessor(QObject *parent = nullptr);
    /// Kills a child that is still there.
    ~ToolProcessor() override;

    /// Asks a running child to quit and looks away from it; with `force` kills it and waits until
    /// it is gone, unless the system can't end it now. The state is `ProcessorFinished` at once.
    void stop(bool force) override;
    /// Asks a running child to quit. Unlike after stop(), the state tells how it has ended, and
    /// only then.
    void finish() { askToQuit(); }
    void pause() override;
    void resume() override;

    /// Tells the tool something through its environment, from the next start on.
    void setVariable(const QString &name, const QString &value);

    /// Lets the tool go before others when processors are scarce, as one has to that works against
    /// the clock; for the next start.
    void setUrgent() { m_child->setNiceness(0); }

    /// What the tool said last, for showing why a run failed; empty before it said anything.
    /// @param count lines at most
    QStringList lastLines(int count) const { return m_tail.lastLines(count); }

    /// Process id of the child, 0 when none runs.
    qint64 processId() const { return m_child->processId(); }

protected:
    /// Enters `ProcessorStarted`, starts the program, and waits for its end when the runner is
    /// blocking.
    void launch(const QString &program, const QStringList &arguments);

    /// Handlers of the child's reports; none is called after `stop`. When it has finished, both
    /// channels have been read to their end.
    virtual void childRunning();
    virtual void childOutput(const QByteArray &bytes) = 0;
    virtual void childReport(const QByteArray &bytes);
    virtual void childFinished(int exitCode, QProcess::ExitStatus status) = 0;
    virtual void childFailed(QProcess::ProcessError error);

    static bool endedWell(int exitCode, QProcess::ExitStatus status)
    {
        return exitCode == 0 && status == QProcess::NormalExit;
    }

    /// Wakes a paused child, and asks a running one to quit where it knows ffmpeg's key for that.
    void askToQuit();
    /// Kills the child and waits until it is gone; one that can't be ended now is let go.
    void killChild();
    /// Whether the letter "q" on its standard input ends the tool.
    virtual bool knowsQuitKey() const { return true; }

    const ReportTail &tail() const { return m_tail; }
    /// Adds a line of our own to the report, for a failure that the tool could not tell.
    void note(const QString &line) { m_tail.append(line.toUtf8() + '\n'); }

private:
    // Reads both channels to their present end.
    // @return whether this object is still there: a listener may have deleted it
    bool drain();

    std::unique_ptr<ChildProcess> newChild();

    std::unique_ptr<ChildProcess> m_child = newChild();
    ReportTail m_tail;
    QMap<QString, QString> m_variables;
};
