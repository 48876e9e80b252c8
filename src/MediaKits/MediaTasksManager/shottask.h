// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/ffmpegextask.h"

#include <QSize>

/// Takes one picture of a video: its first frame from a moment on, as players show it, turned and
/// with square pixels. A moment behind the last frame, as the end of the time line is, gives the
/// last frame.
class ShotTask : public FFmpegExTask
{
    Q_OBJECT

public:
    /// @param shot map with "inputUrl", "outputUrl", "watermark" (a picture for the middle, empty
    ///        for none), "pos" (ms), "scale" (1.0 and 0 are the video's size), or "width" (pixels)
    ///        instead of the scale, and "caption" (list of lines that stand below the picture)
    /// @param source the probed video, null when it isn't known
    explicit ShotTask(const QVariantMap &shot, const QSharedPointer<MediaInfoData> &source = {});

    /// The size of a video's picture at a scale, in square pixels; empty for an unknown video.
    static QSize pictureSize(const MediaInfoData *source, double scale);
    /// The height that a caption of so many lines adds to a picture of that width.
    static int captionHeight(int width, int lines);
    /// The option tree that goes through a video without decoding it, so that the account tells
    /// where its picture ends. Takes as long as the reading of the file.
    static QVariantMap endTree(const QString &inputUrl);
    /// The option that keeps a picture of this format from showing blocks; empty for one that loses
    /// nothing.
    static QVariantMap qualityOption(const QString &path);

protected:
    void prepare() override;
    bool goesOn(bool endedWell) override;

private:
    QVariantMap tree(int beginMs, const QVariantMap &taken) const;
    QString filterText() const;
    QString sizeFilter() const;
    QString captionFilters() const;

    void setEnd(qint64 ms);
    void searchFrom(int beginMs);
    void measureEnd();

    QVariantMap m_shot;
    QSharedPointer<MediaInfoData> m_source;
    // Of the search for the last frame, in ms.
    int m_beginMs;              ///< of the present run
    int m_endMs = 0;            ///< where the picture is taken to end; 0 before the search
    int m_backMs = 0;           ///< how far before that the present run has begun
    bool m_isMeasuring = false; ///< the present run finds out where the picture ends
    bool m_isMeasured = false;
};
