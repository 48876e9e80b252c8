// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/expectedresult.h"

class FFmpegTask;

/// What a check says of a finished file.
struct ResultVerdict
{
    QString failure;     ///< nothing of what was asked for is there; empty when something is
    QStringList remarks; ///< what is there isn't all that was asked for
    QStringList report;  ///< the last lines of the tool that made it
};

/// Compares a result with what was expected of it. Texts are in words for the user.
/// @param result the probed result, null when it holds no media
/// @param account of the tool that made it, or of the one that decoded its source
ResultVerdict checkResult(const ExpectedResult &expected, const MediaInfoData *result,
                          const FFmpegAccount &account);

/// The same with the account of a task that has ended; expects only what the account confirms.
ResultVerdict checkMade(const ExpectedResult &expected, const MediaInfoData *result,
                        const FFmpegTask &maker);
