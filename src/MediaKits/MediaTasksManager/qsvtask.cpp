// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/qsvtask.h"

QsvTask::QsvTask(const QString &name, const QString &groupId, QObject *parent)
    : ToolTask(m_processor, NoEndProgress, name, groupId, parent)
{
    watchRunner();
}

void QsvTask::start()
{
    if (!m_param) {
        failWithoutParam();
        return;
    }
    m_processor.setInOut(m_param->inputFile, m_param->outputFile, m_param->qsvMode);
    setState(START);
    m_processor.start();
}
