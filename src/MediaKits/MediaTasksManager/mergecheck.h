// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/resultcheck.h"

#include <QVector>

class FFmpegTask;

/// One part of a merge.
struct MergePart
{
    QString name; ///< of its source, for the user
    QString file; ///< what was made of it
    ExpectedResult expected;
    const FFmpegTask *maker;
};

/// Looks at each part of a merge, and whether all of them are in the result.
/// @param read what was found in the result and, behind it, in each part
ResultVerdict checkMerge(const QVector<QSharedPointer<MediaInfoData>> &read,
                         const QVector<MergePart> &parts, const FFmpegTask &join);
