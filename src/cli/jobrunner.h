// SPDX-License-Identifier: MIT
#pragma once

#include "cli/consoleprogress.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

#include <QElapsedTimer>
#include <QJsonValue>

#include <functional>
#include <memory>
#include <vector>

/// One thing to do: a source and the way to the task that works on it.
struct CliJob
{
    using Ready = std::function<void(MediaTask *task)>;

    QJsonValue input; ///< the source, or an array of sources, as the result names it
    /// Makes the task and hands it to `Ready`, which owns it; at once or later, once.
    std::function<void(const Ready &ready)> prepare;
};

/// Runs jobs in order through one manager, prints their results as they come and tells when all
/// have ended. Jobs are prepared just ahead of their turn, while others run.
class JobRunner : public QObject
{
    Q_OBJECT

public:
    /// What a user chose of how jobs run and are told.
    struct Options
    {
        int parallel = 1; ///< jobs that may run at the same time
        bool json = false;
        bool strict = false; ///< a remark on a result counts as a failure
    };

    JobRunner(std::vector<CliJob> jobs, const Options &options);
    ~JobRunner() override;

    void start();
    /// Stops what runs and begins nothing more; `allDone` follows.
    void interrupt();

signals:
    /// @param exitCode 0 when every job finished, 1 when any failed or, if remarks count, was
    ///        remarked on, 130 after an interruption
    void allDone(int exitCode);

private:
    struct Run;

    void fill();
    void begin(size_t index, MediaTask *task);
    void end(Run *run);
    void report(const Run &run);
    static QJsonObject recordOf(const Run &run);
    void reportUnbegun();
    void showProgress();
    void finishIfIdle();

    std::vector<CliJob> m_jobs;
    MediaTasksManager m_manager;
    std::vector<std::unique_ptr<Run>> m_runs;
    ConsoleProgress m_progress;
    size_t m_next = 0; ///< the first job that isn't begun
    size_t m_ended = 0;
    size_t m_open = 0; ///< jobs that are begun and have not ended
    size_t m_openLimit;
    bool m_json;
    bool m_strict;
    bool m_failed = false;
    bool m_interrupted = false;
};
