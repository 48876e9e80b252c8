// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/qlvprocessor.h"
#include "MediaKits/MediaTasksManager/tooltask.h"

struct QlvTaskParam : MediaTaskParam
{
    static constexpr int paramType = 9;
    QlvTaskParam(const QString &input, const QString &output)
        : MediaTaskParam(paramType), inputFile(input), outputFile(output)
    {
    }

    QString inputFile;
    QString outputFile;
};

/// Rewraps a QLV file.
class QlvTask : public ToolTask
{
    Q_OBJECT

public:
    QlvTask(const QString &name, const QString &groupId, QObject *parent = nullptr);

    void start() override;
    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

private:
    QlvProcessor m_processor;
    QSharedPointer<QlvTaskParam> m_param;
};
