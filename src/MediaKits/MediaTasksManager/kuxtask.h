// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/kuxprocessor.h"
#include "MediaKits/MediaTasksManager/tooltask.h"

struct KuxParam : MediaTaskParam
{
    static constexpr int paramType = 8;
    KuxParam(const QString &input, const QString &output)
        : MediaTaskParam(paramType), inputFile(input), outputFile(output)
    {
    }

    QString inputFile;
    QString outputFile;
};

/// Turns a KUX file into one that the main ffmpeg reads.
class KuxTask : public ToolTask
{
    Q_OBJECT

public:
    KuxTask(const QString &name, const QString &groupId, QObject *parent = nullptr);

    void start() override;
    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

private:
    KuxProcessor m_processor;
    QSharedPointer<KuxParam> m_param;
};
