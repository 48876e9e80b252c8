// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

/// The longest time in which the event loop did not come round. With the variable BENCH_STALLS
/// each longer one is told.
class StallMeter
{
    static constexpr int tickMs = 5;

public:
    StallMeter()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { tick(); });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_clock.start();
        m_total.start();
        m_timer.start(tickMs);
    }
    qint64 longestMs() const { return m_longest; }

private:
    void tick()
    {
        const qint64 stall = m_clock.restart() - tickMs;
        if (qEnvironmentVariableIsSet("BENCH_STALLS") && stall > 30)
            QTextStream(stderr) << "stall of " << stall << " ms at " << m_total.elapsed() << '\n';
        m_longest = std::max(m_longest, stall);
    }

    QTimer m_timer;
    QElapsedTimer m_clock;
    QElapsedTimer m_total;
    qint64 m_longest = 0;
};
