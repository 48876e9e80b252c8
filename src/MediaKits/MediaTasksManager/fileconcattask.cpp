// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/fileconcattask.h"

#include "MediaKits/MediaFormats/toolquoting.h"

#include <limits>

void FileConcatTask::prepare()
{
    const QString command =
        QStringLiteral("-safe 1 -hide_banner -y -f concat -i %1 -c copy -map 0  %2")
            .arg(quoteToolPath(m_param->listFile), quoteToolPath(m_param->output));
    // Copying has no length of its own to count against: its progress stays near 0.
    setBaseParam(new FFmpegTaskParam(command, std::numeric_limits<int>::max()));
    FFmpegTask::prepare();
}
