// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/ffmpegextask.h"

/// Takes one picture of a video at a moment. A moment behind the last frame, as the end of the time
/// line is, gives the last frame.
class ShotTask : public FFmpegExTask
{
    Q_OBJECT

public:
    /// @param shot map with "inputUrl", "outputUrl", "watermark" (a picture for the middle, empty
    ///        for none), "pos" (ms) and "scale" (1.0 is the video's size)
    /// @param source the probed video, null when it isn't known
    explicit ShotTask(const QVariantMap &shot, const QSharedPointer<MediaInfoData> &source = {});

    /// The option tree of one shot.
    static QVariantMap tree(const QVariantMap &shot);

protected:
    void prepare() override;
    bool goesOn(bool endedWell) override;

private:
    QVariantMap m_shot;
    QSharedPointer<MediaInfoData> m_source;
    int m_backMs = 0; ///< how far before the moment the last run has begun
};
