// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaProcessor/ffmpegprocessor.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/runnertask.h"
#include "MediaKits/MediaTasksManager/sourcefacts.h"

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
class FFmpegTask
    : public ParamTask<FFmpegTaskParam, RunnerTask<FFMpegProcessor, ToolTask::FullEndProgress>>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    /// What ffmpeg has told about its work so far.
    virtual FFmpegAccount account() const { return m_runner.account(); }

protected:
    void prepare() override;
    /// Hands the launcher of ffmpeg what is known of the source, from the next start on.
    /// @param source null for nothing
    void tellSource(const QSharedPointer<MediaInfoData> &source, SourceCover cover = {});
};
