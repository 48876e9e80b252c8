// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/qsvprocessor.h"
#include "MediaKits/MediaTasksManager/tooltask.h"

struct QsvTaskParam : MediaTaskParam
{
    static constexpr int paramType = 10;
    QsvTaskParam(const QString &input, const QString &output, int mode)
        : MediaTaskParam(paramType), inputFile(input), outputFile(output), qsvMode(mode)
    {
    }

    QString inputFile;
    QString outputFile;
    int qsvMode = 0;
};

/// Rewraps a QSV file.
class QsvTask : public ToolTask
{
    Q_OBJECT

public:
    QsvTask(const QString &name, const QString &groupId, QObject *parent = nullptr);

    void start() override;
    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

private:
    QsvProcessor m_processor;
    QSharedPointer<QsvTaskParam> m_param;
};
