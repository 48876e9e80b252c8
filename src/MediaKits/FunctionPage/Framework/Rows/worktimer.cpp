// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/worktimer.h"

#include "MediaKits/MediaFormats/mediatexts.h"

#include <algorithm>
#include <limits>

void WorkTimer::restart()
{
    m_beforePauseMs = 0;
    m_clock.start();
}

void WorkTimer::pause()
{
    m_beforePauseMs = elapsedMs();
    m_clock.invalidate();
}

void WorkTimer::resume()
{
    m_clock.start();
}

int WorkTimer::elapsedMs() const
{
    return m_beforePauseMs + (m_clock.isValid() ? int(m_clock.elapsed()) : 0);
}

QString WorkTimer::remainingText(double progress) const
{
    constexpr double longestMs = std::numeric_limits<int>::max() - 1000;
    const double restMs = (1.0 - progress) * (double(elapsedMs()) / progress);
    return timeText(int(std::clamp(restMs, 0.0, longestMs)) + 1000);
}
