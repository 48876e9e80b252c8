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
    /// The expected rest as "hh:mm:ss", a second rounded up; for a progress above 0.
    /// @param progress up to 1
    QString remainingText(double progress) const;

private:
    QElapsedTimer m_clock; ///< invalid while paused
    int m_beforePauseMs = 0;
};
