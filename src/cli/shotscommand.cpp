// SPDX-License-Identifier: MIT
#include "cli/shotscommand.h"

#include "cli/convertcommand.h"
#include "cli/probecommand.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"
#include "MediaKits/MediaTasksManager/shotseries.h"
#include "MediaKits/MediaTasksManager/shottask.h"

#include <QFileInfo>

#include <algorithm>

namespace {

QVector<int> momentsOf(const ShotWish &wish, int sourceMs)
{
    if (wish.everyMs == 0)
        return wish.atMs;
    const int end = std::min(wish.toMs.value_or(sourceMs), sourceMs);
    const ShotSeries series{wish.fromMs, ShotSeries::lastBefore(end, sourceMs), wish.everyMs};
    QVector<int> moments;
    for (int i = 0; i < series.count(); ++i)
        moments += series.moment(i);
    // Shorter than that, a video still has a frame there.
    return moments.isEmpty() ? QVector<int>{wish.fromMs} : moments;
}

MediaTask *shotTask(const CommandLine &line, const QString &file,
                    const QSharedPointer<MediaInfoData> &info, int sourceMs)
{
    const ShotWish &wish = line.shots;
    QVariantList images;
    const QVector<int> moments = momentsOf(wish, sourceMs);
    for (const int ms : moments)
        images +=
            QVariantMap{{QStringLiteral("pos"), ms}, {QStringLiteral("scale"), float(wish.scale)}};
    QVariantMap map{{QStringLiteral("inputUrl"), file},
                    {QStringLiteral("outputDir"), line.outputDir},
                    {QStringLiteral("baseName"), resultBaseName(QFileInfo(file))},
                    {QStringLiteral("format"), wish.format},
                    {QStringLiteral("images"), images},
                    {QStringLiteral("isPiiic"), wish.isLong},
                    {QStringLiteral("columns"), wish.columns}};
    if (info)
        map.insert(QStringLiteral("sourceInfo"), QVariant::fromValue(info));
    MediaTask *task = createGroupTask(MutiImageKind);
    task->setParam(new MutiImageTaskParam(map));
    return task;
}

// A series needs an end, which a film that was never finished doesn't tell.
void findLength(const QString &file, const QSharedPointer<MediaInfoData> &info, QObject *owner,
                const std::function<void(int)> &ready)
{
    const int toldMs = sourceDurationMs(info);
    if (toldMs > 0 || !inputProblem(file).isEmpty()) {
        ready(toldMs);
        return;
    }
    auto *task = new FFmpegExTask(QString(), QString(), owner);
    task->setParam(new FFmpegExTaskParam(ShotTask::endTree(file)));
    QObject::connect(task, &MediaTask::taskStateChanged, owner, [=](MediaTask::State state) {
        if (!MediaTask::isFinal(state))
            return;
        task->deleteLater();
        ready(int(task->account().writtenMs));
    });
    task->start();
}

void makeTask(const CommandLine &line, const QString &file,
              const QSharedPointer<MediaInfoData> &info, QObject *owner, const CliJob::Ready &ready)
{
    if (line.shots.everyMs == 0)
        ready(shotTask(line, file, info, 0));
    else
        findLength(file, info, owner,
                   [=](int sourceMs) { ready(shotTask(line, file, info, sourceMs)); });
}

} // namespace

std::vector<CliJob> shotJobs(const CommandLine &line, QObject *owner)
{
    std::vector<CliJob> jobs;
    for (const QString &file : line.files) {
        jobs.push_back({file, [=](const CliJob::Ready &ready) {
                            probeSource(file, owner,
                                        [=](const QSharedPointer<MediaInfoData> &info) {
                                            makeTask(line, file, info, owner, ready);
                                        });
                        }});
    }
    return jobs;
}
