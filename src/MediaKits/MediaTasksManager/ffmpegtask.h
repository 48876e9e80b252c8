// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegprocessor.h"
#include "MediaKits/MediaTasksManager/tooltask.h"

struct FFmpegTaskParam : MediaTaskParam
{
    static constexpr int paramType = 2;
    FFmpegTaskParam(const QString &text, int lengthMs)
        : MediaTaskParam(paramType), command(text), durationMs(lengthMs)
    {
    }

    QString command;    ///< all arguments behind the program, file names quoted
    int durationMs = 0; ///< length that progress counts against; 0 for the runner's default
};

/// Runs one ffmpeg command.
class FFmpegTask : public ToolTask
{
    Q_OBJECT

public:
    FFmpegTask(const QString &name, const QString &groupId, QObject *parent = nullptr);

    void start() override;
    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

private:
    FFMpegProcessor m_processor;
    QSharedPointer<FFmpegTaskParam> m_param;
};
