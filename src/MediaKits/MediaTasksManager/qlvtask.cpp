// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/qlvtask.h"

QlvTask::QlvTask(const QString &name, const QString &groupId, QObject *parent)
    : ToolTask(m_processor, NoEndProgress, name, groupId, parent)
{
    watchRunner();
}

void QlvTask::start()
{
    if (!m_param) {
        failWithoutParam();
        return;
    }
    m_processor.setInOut(m_param->inputFile, m_param->outputFile);
    setState(START);
    m_processor.start();
}
