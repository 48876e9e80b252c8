// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QString>

/// The working time of one task, without its pauses, and what is left of it.
class WorkTimer
{
public:
    void restart();
    void pause();
    void resume();

    /// ms of work so far
    int elapsedMs() const;
    /// The expected rest as "hh:mm:ss", a second rounded up; empty while the work has been too
    /// short for one to mean anything.
    /// @param progress up to 1
    QString remainingText(double progress) const { return remainingText(progress, elapsedMs()); }
    /// The same after that much work.
    static QString remainingText(double progress, int elapsedMs);

private:
    QElapsedTimer m_clock; ///< invalid while paused
    int m_beforePauseMs = 0;
};
