// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QString>

/// The functions of the program in the order of the side bar. The numbers are those of their pages
/// in the stack and of the usage events.
enum class MediaFunction {
    Home = 0,
    Convert,
    Compress,
    Cut,
    Merge,
    Beautify,
    Gif,
    Dubbing,
    Shot,
    Watermark,
    AudioConvert,
    Screencap,
};

/// What is known by a function's number.
struct MediaFunctionRecord
{
    /// In the side bar and in the usage events.
    QString title;
    /// Folder of its results inside the user's; empty for one without results.
    QString folder;
    /// Its section of the function settings; empty for one without settings.
    QLatin1String section;
    /// Numbered usage events of its page and of a start on it; 0 for none.
    int viewEvent;
    int startEvent;
};

const MediaFunctionRecord &functionRecord(MediaFunction function);

/// Where a function's results go unless the user chose another directory, below the user's
/// documents. The directory isn't created.
QString defaultOutputDir(MediaFunction function);
