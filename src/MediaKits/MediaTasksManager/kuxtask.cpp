// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/kuxtask.h"

#include "MediaKits/MediaFormats/toolquoting.h"

namespace {

// An upper bound: the tool's own report lowers it.
constexpr quint32 longestMs = 999999;

} // namespace

KuxTask::KuxTask(const QString &name, const QString &groupId, QObject *parent)
    : ToolTask(m_processor, FullEndProgress, name, groupId, parent)
{
    watchRunner();
}

void KuxTask::start()
{
    if (!m_param) {
        failWithoutParam();
        return;
    }
    const QString arguments =
        QStringLiteral(" -hide_banner -y -i %1 %2")
            .arg(quoteToolPath(m_param->inputFile), quoteToolPath(m_param->outputFile));
    m_processor.setCommand(arguments, longestMs);
    setState(START);
    m_processor.start();
}
