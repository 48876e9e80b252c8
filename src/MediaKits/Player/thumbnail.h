// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QSharedPointer>
#include <QtGlobal>

#include <functional>

struct MediaInfoData;
class QObject;

/// Hands a small picture of a video, of its first frame from a time on, to `callback`: null at once
/// for a file that is missing or no video by its name, otherwise later, and null when no picture
/// can be had. Pictures are made one after the other.
/// @param context the callback isn't called any more once it is gone
/// @param atMs of the video's time
/// @param source the probed video where it is known; otherwise it is read once more
void requestThumbnail(const QString &path, QObject *context,
                      const std::function<void(const QPixmap &)> &callback, int atMs = 0,
                      const QSharedPointer<MediaInfoData> &source = {});

/// As long as one is there, no further picture is begun. For work that keeps the window busy: the
/// start of a child process takes up to 10 ms, and the program then finds all its memory shared
/// with it, page by page.
class ThumbnailBreak
{
public:
    ThumbnailBreak();
    ~ThumbnailBreak();
    Q_DISABLE_COPY(ThumbnailBreak)
};
