// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/workfolder.h"
#include "MediaKits/MediaInfo/mediainfodata.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

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

private:
    QString newFile();

    MediaTasksManager m_manager;
    QString m_file;
    QSharedPointer<MediaInfoData> m_info;
    int m_width = 0;
    std::unique_ptr<WorkFolder> m_folder; ///< null until it is needed
    int m_waiting = 0;
};
