// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/worktimer.h"

#include "MediaKits/MediaFormats/mediatexts.h"

#include <algorithm>
#include <limits>

namespace {

// The first seconds go to the steps around a conversion and to the launch of the tool: what they
// tell of its speed is far off, less so the more is done.
constexpr int leastWorkMs = 1000;
constexpr int earlyWorkMs = 5000;
constexpr double earlyProgress = 0.02;
constexpr double leastProgress = 1e-4;

} // namespace

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

QString WorkTimer::remainingText(double progress, int elapsedMs)
{
    constexpr double longestMs = std::numeric_limits<int>::max() - 1000;
    if (elapsedMs < leastWorkMs || progress < leastProgress ||
        (elapsedMs < earlyWorkMs && progress < earlyProgress))
        return {};
    const double restMs = (1.0 - progress) * (double(elapsedMs) / progress);
    return timeText(int(std::clamp(restMs, 0.0, longestMs)) + 1000);
}
