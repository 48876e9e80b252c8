// SPDX-License-Identifier: MIT
#include "cli/jobrunner.h"

#include "cli/output.h"
#include "MediaKits/MediaTasksManager/failurecause.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaEnum>

#include <algorithm>

namespace {

// A page may wait half a second for its next job; a script that converts a thousand clips may
// not.
constexpr int dispatchIntervalMs = 5;
constexpr int interruptedExitCode = 128 + 2;

QString stateKey(MediaTask::State state)
{
    return QLatin1String(QMetaEnum::fromType<MediaTask::State>().valueToKey(state));
}

// All keys that a job's record has.
QJsonObject jobRecord(const QJsonValue &input, MediaTask::State state)
{
    return {{QStringLiteral("input"), input},           {QStringLiteral("output"), QJsonValue()},
            {QStringLiteral("state"), stateKey(state)}, {QStringLiteral("seconds"), 0},
            {QStringLiteral("message"), QString()},     {QStringLiteral("warnings"), QJsonArray()},
            {QStringLiteral("report"), QJsonArray()}};
}

} // namespace

struct JobRunner::Run
{
    QJsonValue input;
    std::unique_ptr<MediaTask> task;
    QElapsedTimer clock;
    QStringList outputs; ///< in the order in which they came
    double progress = 0.0;
};

JobRunner::JobRunner(std::vector<CliJob> jobs, const Options &options)
    : m_jobs(std::move(jobs)),
      m_manager(dispatchIntervalMs, options.parallel),
      // One more than run, so that the next job is probed while the others work.
      m_openLimit(size_t(options.parallel) + 1),
      m_json(options.json),
      m_strict(options.strict)
{
}

JobRunner::~JobRunner() = default;

void JobRunner::start()
{
    m_manager.startTimer();
    fill();
    finishIfIdle();
}

void JobRunner::fill()
{
    while (m_open < m_openLimit && m_next < m_jobs.size() && !m_interrupted) {
        const size_t index = m_next++;
        ++m_open;
        m_jobs[index].prepare([this, index](MediaTask *task) { begin(index, task); });
    }
}

void JobRunner::begin(size_t index, MediaTask *task)
{
    m_runs.push_back(std::make_unique<Run>());
    Run *run = m_runs.back().get();
    run->input = m_jobs[index].input;
    run->task.reset(task);
    connect(task, &MediaTask::taskProgress, this, [this, run](double progress) {
        run->progress = progress;
        showProgress();
    });
    connect(task, &MediaTask::taskCustomeMsgCome, this,
            [run](int type, MediaTask *, const QVariant &value) {
                if (type == MediaTask::OutputMoved)
                    run->outputs += value.toString();
            });
    // Queued, so that the task is not deleted inside its own signal.
    connect(
        task, &MediaTask::taskStateChanged, this,
        [this, run](MediaTask::State state) {
            if (state == MediaTask::START)
                run->clock.start();
            else if (MediaTask::isFinal(state))
                end(run);
        },
        Qt::QueuedConnection);
    if (m_interrupted)
        end(run);
    else
        m_manager.addTask(task);
}

void JobRunner::end(Run *run)
{
    report(*run);
    --m_open;
    ++m_ended;
    const auto it = std::find_if(m_runs.begin(), m_runs.end(),
                                 [run](const auto &held) { return held.get() == run; });
    m_runs.erase(it);
    fill();
    finishIfIdle();
}

void JobRunner::report(const Run &run)
{
    m_progress.clear();
    const bool finished = run.task->state() == MediaTask::FINISHED;
    const TaskFailure &failure = run.task->failure();
    const TaskRemarks &remarks = run.task->remarks();
    if (!finished || (m_strict && !remarks.isEmpty()))
        m_failed = true;
    if (m_json) {
        printJsonLine(recordOf(run));
    } else if (finished) {
        for (const QString &path : run.outputs)
            printLine(path);
    }
    if (!failure.cause.isEmpty())
        printMessage(failure.cause);
    const QString said = tellingLine(failure.report);
    if (!said.isEmpty())
        printMessage(said);
    if (finished && !remarks.isEmpty())
        printMessage(run.outputs.value(0) + QStringLiteral("：") +
                     remarks.texts.join(QStringLiteral("；")));
}

QJsonObject JobRunner::recordOf(const Run &run)
{
    const MediaTask::State state = run.task->state();
    const bool finished = state == MediaTask::FINISHED;
    const TaskFailure &failure = run.task->failure();
    const TaskRemarks &remarks = run.task->remarks();
    QJsonObject record =
        jobRecord(run.input, finished || state == MediaTask::ERROR ? state : MediaTask::STOPED);
    if (finished)
        record[QLatin1String("output")] = run.outputs.value(0);
    if (run.clock.isValid())
        record[QLatin1String("seconds")] = double(run.clock.elapsed()) / 1000.0;
    record[QLatin1String("message")] = failure.cause;
    record[QLatin1String("warnings")] = QJsonArray::fromStringList(remarks.texts);
    record[QLatin1String("report")] =
        QJsonArray::fromStringList(finished ? remarks.report : failure.report);
    if (run.outputs.size() > 1)
        record[QLatin1String("outputs")] = QJsonArray::fromStringList(run.outputs);
    return record;
}

void JobRunner::reportUnbegun()
{
    for (; m_json && m_next < m_jobs.size(); ++m_next)
        printJsonLine(jobRecord(m_jobs[m_next].input, MediaTask::STOPED));
}

void JobRunner::interrupt()
{
    m_interrupted = true;
    std::vector<Run *> waiting;
    for (const auto &run : m_runs) {
        if (m_manager.removeTask(run->task.get()))
            run->task->stop();
        else
            waiting.push_back(run.get());
    }
    for (Run *run : waiting)
        end(run);
    finishIfIdle();
}

void JobRunner::showProgress()
{
    double done = double(m_ended);
    for (const auto &run : m_runs)
        done += run->progress;
    m_progress.show(done / double(m_jobs.size()),
                    QStringLiteral("%1/%2").arg(m_ended).arg(m_jobs.size()));
}

void JobRunner::finishIfIdle()
{
    if (m_open != 0 || (m_next < m_jobs.size() && !m_interrupted))
        return;
    m_progress.clear();
    reportUnbegun();
    emit allDone(m_interrupted ? interruptedExitCode : int(m_failed));
}
