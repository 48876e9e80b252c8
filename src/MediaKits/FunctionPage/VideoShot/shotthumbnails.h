// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/workfolder.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

#include <QPointer>

#include <deque>
#include <functional>
#include <memory>

/// Makes the small pictures of a video's moments, one after the other. Each lives in a file only
/// until it is taken; nothing of them is left when this object goes, nor, after a program that was
/// killed, once another starts.
class ShotThumbnails : public QObject
{
    Q_OBJECT

public:
    explicit ShotThumbnails(QObject *parent);
    ~ShotThumbnails() override;

    /// @param width of the pictures, pixels
    void setSource(const QString &file, const QSharedPointer<MediaInfoData> &info, int width);

    /// @param context the picture is given up when it goes
    /// @param done called once, with an empty path when there is no picture
    void request(int posMs, QObject *context, const std::function<void(const QString &)> &done);
    /// Lets the context's picture be the next one. False when none is on its way.
    bool prefer(const QObject *context);

    /// Finds out how long a video is that doesn't tell.
    void requestLength(const std::function<void(int ms)> &done);

private:
    struct Wish
    {
        int posMs;
        QPointer<QObject> context;
        std::function<void(const QString &)> done;
    };

    QString newFile();
    void runNext();
    void run(MediaTask *task);
    void begin(const Wish &wish);

    MediaTasksManager m_manager;
    QString m_file;
    QSharedPointer<MediaInfoData> m_info;
    int m_width = 0;
    std::unique_ptr<WorkFolder> m_folder; ///< null until it is needed
    std::deque<Wish> m_wishes;
    QPointer<MediaTask> m_task;        ///< the present one
    QPointer<const QObject> m_context; ///< of the present picture
};
