// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/leastratetrials.h"

#include "MediaKits/AppInstance/LocalStore/workfolder.h"
#include "MediaKits/MediaTasksManager/converttask.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int partMs = 3000;
constexpr int partCount = 3;
constexpr double kbitPerKb = 8.192; // ffmpeg's kB have 1024 bytes
constexpr double secondMs = 1000.0;

// From all over the film; all of a short one.
QVector<TimeSpan> partsOf(int lengthMs)
{
    if (lengthMs <= partMs * (partCount + 1))
        return {{0, lengthMs}};
    QVector<TimeSpan> parts;
    for (int i = 0; i < partCount; i++) {
        const int middle = int(qint64(lengthMs) * (2 * i + 1) / (2 * partCount));
        parts.append({middle - partMs / 2, middle + partMs / 2});
    }
    return parts;
}

} // namespace

LeastRateTrials::LeastRateTrials(QObject *parent) : QObject(parent) {}

LeastRateTrials::~LeastRateTrials()
{
    if (m_task)
        m_task->disconnect(this);
}

void LeastRateTrials::ask(QObject *asker, const ConvertTaskParam &film)
{
    const bool isAsked = std::any_of(m_trials.cbegin(), m_trials.cend(),
                                     [&](const Trial &trial) { return trial.asker == asker; });
    if (isAsked)
        return;
    m_trials.append({asker, film, partsOf(film.durationMs)});
    connect(asker, &QObject::destroyed, this, &LeastRateTrials::next);
    next();
}

// Stops what nobody asks for any more.
void LeastRateTrials::next()
{
    while (!m_trials.isEmpty() && !m_trials.first().asker) {
        m_trials.removeFirst();
        if (m_task)
            m_task->disconnect(this);
        m_task.reset();
    }
    if (m_task || m_trials.isEmpty())
        return;
    if (!m_folder)
        m_folder = std::make_unique<WorkFolder>();
    start();
}

void LeastRateTrials::start()
{
    const Trial &trial = m_trials.first();
    auto *param = new ConvertTaskParam(trial.film);
    param->timeRange = QSharedPointer<TimeSpan>::create(trial.parts.first());
    param->outputDir = m_folder->path();
    param->outputName = QStringLiteral("trial");
    m_task = std::make_unique<ConvertTask>(QStringLiteral("LeastRate"), QString());
    m_task->setParam(param);
    // Queued, as it may fail while it is started.
    connect(
        m_task.get(), &MediaTask::taskStateChanged, this,
        [this] {
            if (m_task && MediaTask::isFinal(m_task->state()))
                onEnded();
        },
        Qt::QueuedConnection);
    m_task->start();
}

void LeastRateTrials::onEnded()
{
    const std::unique_ptr<ConvertTask> ended = std::move(m_task);
    Trial &trial = m_trials.first();
    const FFmpegAccount account = ended->account();
    if (ended->state() == MediaTask::FINISHED && account.pictureKb > 0 && account.writtenMs > 0) {
        trial.kbit += account.pictureKb * kbitPerKb;
        trial.ms += double(account.writtenMs);
    }
    trial.parts.removeFirst();
    if (trial.parts.isEmpty()) {
        const Trial done = m_trials.takeFirst();
        if (done.asker)
            done.asker->disconnect(this);
        if (done.asker && done.ms > 0)
            emit measured(done.asker, std::max(1, int(std::ceil(done.kbit * secondMs / done.ms))));
    }
    next();
}
