// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QVariantList>

struct MediaInfoData;

/// What marks are placed on.
struct MarkedPicture
{
    QSize size;               ///< in its own pixels, turned as it is shown
    double pixelAspect = 1.0; ///< width of a pixel by its height
    int durationMs = 0;       ///< of the film; 0 when it is unknown
};

MarkedPicture markedPicture(const MediaInfoData &info);

/// Marks of one picture as they lie on another one: they keep their place by their share of the
/// free room, so that what is in a corner stays there, and their size by the picture's height;
/// removals keep their share of both sides.
///
/// What lasts to the end does so on the other film, and what lasts for the whole of it too, which
/// an end of 0 says as well. In a shorter film what begins in it ends with it at the latest; what
/// would begin behind its end is not lost, but keeps its length and ends with it, or lasts for all
/// of it.
/// @param marks plain maps
QVariantList marksFor(const QVariantList &marks, const MarkedPicture &from,
                      const MarkedPicture &to);
