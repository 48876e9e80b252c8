// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/tooltask.h"

/// A tool task together with the runner that it owns.
template<class Runner, ToolTask::EndProgress endProgress>
class RunnerTask : public ToolTask
{
public:
    explicit RunnerTask(const QString &name, const QString &groupId, QObject *parent = nullptr)
        : ToolTask(m_runner, endProgress, name, groupId, parent)
    {
        watchRunner();
    }

protected:
    Runner m_runner;
};
