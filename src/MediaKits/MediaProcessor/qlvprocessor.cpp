// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/qlvprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

QString QlvProcessor::tool() const
{
    return toolPath();
}

QString QlvProcessor::plainArgument() const
{
    return QStringLiteral("%1|%2").arg(inputFile(), outputFile());
}
