// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

/// What a compressed file of a source is: a container that ffmpeg writes, and the codec labels for
/// it where ffmpeg's own choice doesn't work.
struct CompressContainer
{
    QString suffix; ///< lower case
    QString videoLabel;
    QString audioLabel;
};

/// The source's own container, or the nearest to it that can be written.
CompressContainer compressContainer(const QString &sourceSuffix);

/// A copy of the preset that names the encoders of the container.
/// @param preset has a video record
QSharedPointer<EncParam> withEncodersOf(const CompressContainer &container, const EncParam &preset);
