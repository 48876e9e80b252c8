// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/mediainfobase.h"
#include "MediaKits/MediaTasksManager/ffmpegtask.h"

/// The small picture that stands for a video.
struct VideoImagePickTaskParam : MediaTaskParam
{
    static constexpr int paramType = 15;
    VideoImagePickTaskParam(const QString &video, const QString &picture, int from = 0)
        : MediaTaskParam(paramType), path(video), target(picture), fromMs(from)
    {
    }

    QString path;   ///< the video
    QString target; ///< ".png" gives the first frame, ".jpg" the one at one second
    int fromMs;     ///< where the frames of a ".png" begin
    /// The probed video; ffprobe reads it ahead of the picture when this is null.
    QSharedPointer<MediaInfoData> sourceInfo;
};

/// Writes one picture of a video, 300 pixels wide. A target with another suffix ends in `ERROR`.
class VideoImagePickTask : public ParamTask<VideoImagePickTaskParam, FFmpegTask>
{
    Q_OBJECT

public:
    explicit VideoImagePickTask(QObject *parent = nullptr);

    void start() override;
    void stop() override;

    /// Everything behind the program; empty for a suffix that isn't known.
    static QString commandText(const VideoImagePickTaskParam &param);

protected:
    void prepare() override;

private:
    void readSource();

    QPointer<MediaInfoBase> m_reader; ///< as long as the source is being read
};
