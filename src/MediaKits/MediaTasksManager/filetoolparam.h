// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediataskparam.h"

/// What a tool is told that turns one file into another.
/// @tparam number the type that tells this parameter from those of other tasks
template<int number>
struct FileToolParam : MediaTaskParam
{
    static constexpr int paramType = number;
    FileToolParam(const QString &input, const QString &output)
        : MediaTaskParam(paramType), inputFile(input), outputFile(output)
    {
    }

    QString inputFile;
    QString outputFile;
};
