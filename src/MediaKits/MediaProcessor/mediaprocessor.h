// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Base of the runners: an object that owns one child process of one external tool and turns
/// what happens to it into a state and a progress value. It serves one run.
class MediaProcessor : public QObject
{
    Q_OBJECT

public:
    /// Everything above `ProcessorResumed` is final.
    enum State {
        ProcessorIdle = 1,
        ProcessorStarted,
        ProcessorRunning,
        ProcessorPaused,
        ProcessorResumed,
        ProcessorFinished,
        ProcessorError,
    };
    Q_ENUM(State)

    explicit MediaProcessor(QObject *parent = nullptr);

    virtual void start() = 0;
    /// Asks the tool to end; with `force` it is killed and gone when this returns.
    virtual void stop(bool force) = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;

    State state() const { return m_state; }
    bool isFinal() const { return m_state > ProcessorResumed; }

    /// With true, `start` waits for the end of the tool, at most 30000 ms.
    void setBlocking(bool blocking) { m_blocking = blocking; }

signals:
    void stateChanged(MediaProcessor::State state);
    /// @param progress from 0 to 1
    void progressChanged(double progress);

protected:
    /// Stores the state and emits it when it differs from the present one.
    void setState(State state);
    bool isBlocking() const { return m_blocking; }

private:
    bool m_blocking = false;
    State m_state = ProcessorIdle;
};
