// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct TempDirDeleteTaskParam : MediaTaskParam
{
    static constexpr int paramType = 13;
    explicit TempDirDeleteTaskParam(const QString &path = {}) : MediaTaskParam(paramType), dir(path)
    {
    }

    QString dir;
};

/// Removes a work folder with all that lies in it. What can't be removed is left to the sweep of
/// the marker directory around it.
class TempDirDeleteTask : public SynchronousTask
{
    Q_OBJECT

public:
    using SynchronousTask::SynchronousTask;

    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

protected:
    QString perform() override;

private:
    QSharedPointer<TempDirDeleteTaskParam> m_param;
};
