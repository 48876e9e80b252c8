// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct TempDirCreateParam : MediaTaskParam
{
    static constexpr int paramType = 14;
    explicit TempDirCreateParam(const QString &dir = {}) : MediaTaskParam(paramType), path(dir) {}

    QString path;
};

/// Makes a work folder and claims it for this process.
class TempDirCreateTask : public SynchronousTask
{
    Q_OBJECT

public:
    using SynchronousTask::SynchronousTask;

    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

protected:
    QString perform() override;

private:
    QSharedPointer<TempDirCreateParam> m_param;
};
