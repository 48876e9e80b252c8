// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <memory>

class MediaTask;
class WorkFolder;

/// Converts a little of a film in the background, into a folder of its own, to find out or to show
/// what the whole becomes. Folder and conversion go with the object.
class TrialConversion : public QObject
{
    Q_OBJECT

public:
    explicit TrialConversion(QObject *parent);
    ~TrialConversion() override;

    /// Begins; what was under way is stopped, and the file that it made before is gone.
    /// @param part of the film
    void start(const ConvertTaskParam &film, const TimeSpan &part);
    /// Stops what was under way.
    void stop();
    /// What was made last.
    QString file() const;

signals:
    void made();
    /// @param cause in the tool's words, may be empty
    void failed(const QString &cause);

private:
    void end();

    std::unique_ptr<WorkFolder> m_folder;
    int m_number = 0;
    QString m_format;
    std::unique_ptr<MediaTask> m_task;
};
