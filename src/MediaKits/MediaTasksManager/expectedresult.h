// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegaccount.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QSize>

/// What a result should hold. A field that nobody can tell beforehand stays as it is here, and
/// nothing is said about it.
struct ExpectedResult
{
    bool hasPicture = false;
    bool hasSound = false;
    QSize pictureSize;  ///< empty for any
    int sampleRate = 0; ///< Hz
    int channels = 0;

    /// Length in ms, and where picture and sound end.
    qint64 lengthMs = 0;
    qint64 pictureEndMs = 0;
    qint64 soundEndMs = 0;
    /// Shortfall in thousandths of these times that means nothing.
    int slackPermille = 1;
    /// What these times were taken from, in words for the user.
    QString measure;

    /// Length in ms of the whole source as its header tells, and whether the source ends before it.
    qint64 sourceMs = 0;
    bool isSourceCutOff = false;
};

/// What a conversion should give, as far as the record and the probed source tell.
ExpectedResult expectedResult(const ConvertTaskParam &param);

/// The same after the run: without its times where ffmpeg saw another length in the source's header
/// and the source isn't known to be cut off, since such a header lies.
ExpectedResult confirmed(ExpectedResult expected, const FFmpegAccount &account);
