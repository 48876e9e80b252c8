// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QTimer>

#include <memory>

class MediaTask;
class WorkFolder;

/// Estimates how large a GIF becomes from a second of it, which is converted in the background into
/// a folder of its own. Folder and conversion go with the object.
class GifSample : public QObject
{
    Q_OBJECT

public:
    explicit GifSample(QObject *parent);
    ~GifSample() override;

    /// Begins soon, unless it is told of another GIF meanwhile. What was under way is stopped.
    void take(const ConvertTaskParam &gif);
    /// Stops what was under way, and begins nothing.
    void cancel();

signals:
    /// @param bytes of the whole GIF; -1 when they can't be told
    void estimated(qint64 bytes);

private:
    void begin();
    void end();
    qint64 wholeSize() const;
    QString sampleFile() const;

    ConvertTaskParam m_gif;
    TimeSpan m_span; // of the sample
    std::unique_ptr<WorkFolder> m_folder;
    int m_number = 0;
    QTimer m_pause;
    std::unique_ptr<MediaTask> m_task;
};
