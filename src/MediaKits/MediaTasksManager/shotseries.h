// SPDX-License-Identifier: MIT
#pragma once

/// The moments of a series of pictures, at equal distances, in ms.
struct ShotSeries
{
    int start;
    int last; ///< no moment is behind it
    int step;

    int count() const { return last < start ? 0 : (last - start) / step + 1; }
    int moment(int index) const { return start + index * step; }

    /// The last moment of a series in a part of a video. One up to the end of the video stops short
    /// of it, where there is a frame for sure.
    /// @param end of the part
    static int lastBefore(int end, int durationMs)
    {
        constexpr int endToleranceMs = 9;
        constexpr int endGapMs = 100;
        return end < durationMs - endToleranceMs ? end : durationMs - endGapMs;
    }
};
