// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>

/// A part of a medium's time. Where a pointer to it is null, nothing was restricted.
struct TimeSpan
{
    int start = 0; ///< ms from the beginning
    int end = 0;   ///< ms from the beginning

    bool operator==(const TimeSpan &other) const
    {
        return start == other.start && end == other.end;
    }
};

/// A part of the picture: x, y, width, height in picture pixels. Where a pointer to it is null,
/// nothing was restricted.
struct CropBox
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const CropBox &other) const
    {
        return x == other.x && y == other.y && width == other.width && height == other.height;
    }
};

/// Whether two such pointers restrict to the same.
template<class Selection>
bool isSameSelection(const QSharedPointer<Selection> &one, const QSharedPointer<Selection> &other)
{
    return one && other ? *one == *other : one == other;
}

Q_DECLARE_METATYPE(QSharedPointer<TimeSpan>)
Q_DECLARE_METATYPE(QSharedPointer<CropBox>)
