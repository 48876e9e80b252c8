// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/kuxtask.h"

#include "MediaKits/MediaFormats/toolquoting.h"

namespace {

// An upper bound: the tool's own report lowers it.
constexpr quint32 longestMs = 999999;

} // namespace

void KuxTask::prepare()
{
    const QString arguments =
        QStringLiteral(" -hide_banner -y -i %1 %2")
            .arg(quoteToolPath(m_param->inputFile), quoteToolPath(m_param->outputFile));
    m_runner.setCommand(arguments, longestMs);
}
