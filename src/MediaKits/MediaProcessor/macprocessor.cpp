// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/macprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

void MacProcessor::start()
{
    setState(ProcessorStarted);
    // Compression level "high".
    launch(macPath(), {inputFile(), outputFile(), QStringLiteral("-c3000")});
}
