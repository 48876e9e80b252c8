// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>

/// A part of a medium's time. Where a pointer to it is null, nothing was restricted.
struct TimeSpan
{
    int start = 0; ///< ms from the beginning
    int end = 0;   ///< ms from the beginning
};

/// A part of the picture: x, y, width, height in picture pixels. Where a pointer to it is null,
/// nothing was restricted.
struct CropBox
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

Q_DECLARE_METATYPE(QSharedPointer<TimeSpan>)
Q_DECLARE_METATYPE(QSharedPointer<CropBox>)
