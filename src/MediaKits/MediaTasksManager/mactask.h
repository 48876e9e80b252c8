// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/macprocessor.h"
#include "MediaKits/MediaTasksManager/tooltask.h"

struct MacTaskParam : MediaTaskParam
{
    static constexpr int paramType = 11;
    MacTaskParam(const QString &input, const QString &output)
        : MediaTaskParam(paramType), inputFile(input), outputFile(output)
    {
    }

    QString inputFile;
    QString outputFile;
};

/// Encodes a WAV file as Monkey's Audio.
class MacTask : public ToolTask
{
    Q_OBJECT

public:
    MacTask(const QString &name, const QString &groupId, QObject *parent = nullptr);

    void start() override;
    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

private:
    MacProcessor m_processor;
    QSharedPointer<MacTaskParam> m_param;
};
