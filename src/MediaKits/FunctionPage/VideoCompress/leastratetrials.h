// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QPointer>
#include <QVector>

#include <memory>

class ConvertTask;
class WorkFolder;

/// Finds out how few bits the encoders need for films, by converting some seconds of each in the
/// background, one film after the other.
class LeastRateTrials : public QObject
{
    Q_OBJECT

public:
    explicit LeastRateTrials(QObject *parent);
    ~LeastRateTrials() override;

    /// @param asker whose film it is; a film without it is forgotten
    /// @param film asks for as few bits as can be; its length is known
    void ask(QObject *asker, const ConvertTaskParam &film);

signals:
    /// @param kbps of the picture at least, above 0
    void measured(QObject *asker, int kbps);

private:
    struct Trial
    {
        QPointer<QObject> asker;
        ConvertTaskParam film;
        QVector<TimeSpan> parts; ///< that are still to be converted
        double kbit = 0;
        double ms = 0;
    };

    void next();
    void start();
    void onEnded();

    QVector<Trial> m_trials; // the first one is under way when there is a task
    std::unique_ptr<WorkFolder> m_folder;
    std::unique_ptr<ConvertTask> m_task;
};
