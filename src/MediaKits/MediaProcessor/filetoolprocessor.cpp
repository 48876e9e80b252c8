// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/filetoolprocessor.h"

void FileToolProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    setState(endedWell(exitCode, status) ? ProcessorFinished : ProcessorError);
}
