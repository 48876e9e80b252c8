// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Numbers of the functions that produce files.
enum OutputFunction {
    ConvertOutput = 1,
    CompressOutput = 2,
    CutOutput = 3,
    MergeOutput = 4,
    BeautifyOutput = 5,
    GifOutput = 6,
    DubbingOutput = 7,
    ShotOutput = 8,
    WatermarkOutput = 9,
    AudioConvertOutput = 10,
    ScreencapOutput = 11,
};

/// Where a function's results go unless the user chose another directory, below the user's
/// documents. The directory isn't created.
/// @param function an OutputFunction; any other number gives an empty path
QString defaultOutputDir(int function);
